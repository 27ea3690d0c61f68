#pragma once

#include "async/Clock.h"
#include "async/Failure.h"
#include "async/TaskScope.h"
#include "desktop/InstallerConnection.h"

#include <QObject>

#include <optional>
#include <variant>

namespace palvera {

class HttpClient;
class Workspace;

/// An update goes no further, for a reason of the updater's own.
class UpdateError : public Failure {
public:
    using Failure::Failure;
};

/// Keeps the program current: reads the feed of published builds, and when it is asked to, downloads the image of a
/// newer one, has the installer stage and install it, and starts the program anew.
///
/// Lives on the main thread. It begins as it is made; `close` comes before it goes.
class Updater : public QObject {
    Q_OBJECT

public:
    /// A build that the feed names. All of it comes from outside, and none of it is signed.
    struct Release {
        QString version; ///< for people
        QString build;   ///< a decimal integer
        QString url;     ///< of the image
        std::optional<QString> notes;

        bool operator==(const Release&) const = default;
    };

    struct Idle {
        bool operator==(const Idle&) const = default;
    };
    struct Available {
        bool operator==(const Available&) const = default;
    };
    struct Downloading {
        double fraction = 0; ///< from 0 to 1
        bool operator==(const Downloading&) const = default;
    };
    struct Preparing {
        bool operator==(const Preparing&) const = default;
    };
    struct Ready {
        bool operator==(const Ready&) const = default;
    };
    struct Restarting {
        bool operator==(const Restarting&) const = default;
    };
    struct Failed {
        QString message;
        bool operator==(const Failed&) const = default;
    };
    /// Where the update stands.
    using Phase = std::variant<Idle, Available, Downloading, Preparing, Ready, Restarting, Failed>;

    /// What the user who asked by hand is told.
    struct Alert {
        enum class Kind { checking, upToDate, unknown, notHere };
        Kind kind;
        QString title;
        QString detail;

        bool operator==(const Alert&) const = default;
    };

    /// When something happened, and what.
    struct Note {
        Clock::WallTime when;
        QString text;

        bool operator==(const Note&) const = default;
    };

    /// What it works with. Everything referred to outlives it.
    struct Environment {
        Executor main;
        Executor disk; ///< threads that may block
        Clock& clock;
        HttpClient& http; ///< without cookies, and not for bulk that others move: the image is written where it arrives
        Workspace& workspace;
        QByteArray feed; ///< its address; empty where updates come by another way, and then nothing is ever checked
        QString version = {};
        QString build = {};
        QString refusedBuild = {}; ///< one that did not start here, and is not offered
        QString caches;            ///< a folder of the program's own; its "Update" is removed whole
        QString target;            ///< the root of the copy that runs, see ProgramCopy
        std::function<std::unique_ptr<InstallerConnection>()> connect;
    };

    explicit Updater(Environment environment, QObject* parent = nullptr);
    ~Updater() override;

    /// Whether it looks for builds at all.
    bool isInUse() const { return !m_environment.feed.isEmpty(); }
    /// The newer build that was last read of, whatever has become of it.
    const std::optional<Release>& release() const { return m_release; }
    const Phase& phase() const { return m_phase; }
    const std::optional<Alert>& alert() const { return m_alert; }
    /// When the feed was last read, by the clock on the wall.
    const std::optional<Clock::WallTime>& lastChecked() const { return m_lastChecked; }
    /// Whether the feed did not answer when it was asked last.
    bool isFeedSilent() const { return m_isFeedSilent; }
    /// What failed last; stays when the phase goes on.
    const std::optional<Note>& lastFailure() const { return m_lastFailure; }
    /// Such as "1.4 (57)".
    QString versionText() const;

    /// Begins to check, every two minutes and whenever the user comes back; see `check`. A second call does nothing.
    void start();
    /// Reads the feed. Not when there is an update under way and, unless by `force`, not within twenty seconds of the
    /// last time, nor while it is being read. Whether it was understood, or not needed.
    Task<bool> check(bool force);
    /// Checks because the user says so, and tells what came of it in `alert`, unless there is an update to be seen.
    void checkNow();
    void dismissAlert();
    /// Downloads and prepares the release.
    void install();
    /// Puts what is ready in place and starts it in the place of this process.
    void restart();
    /// Cuts off what is under way; see TaskScope.
    Task<void> close() { return m_scope.close(); }

Q_SIGNALS:
    /// Of the release, the phase, the alert or what is known of the last check.
    void changed();

private:
    /// Whether nothing is under way, and nothing has failed that is still to be seen.
    bool isIdle() const;
    QString imageFolder() const;
    void setPhase(Phase phase);
    void setAlert(std::optional<Alert> alert);
    void fail(const QString& message);
    void advance(double fraction);
    Task<void> checkEverAgain();
    Task<void> checkByHand();
    Task<void> sayThatItTakesTime(int question);
    Task<void> checkOnce() { co_await check(false); }
    Task<std::optional<Release>> readFeed();
    Task<void> downloadAndPrepare(Release release);
    Task<QString> download(Release release);
    Task<void> installAndRelaunch();
    Task<QString> ask(std::function<void(PVInstallerProtocol&, PVInstallerProtocol::Reply)> body);

    const Environment m_environment;
    std::optional<Release> m_release;
    Phase m_phase = Idle{};
    std::optional<Alert> m_alert;
    std::optional<Clock::WallTime> m_lastChecked;
    bool m_isFeedSilent = false;
    std::optional<Note> m_lastFailure;
    bool m_started = false;
    std::optional<Clock::Moment> m_lastRead;
    int m_reads = 0;         // under way
    int m_questions = 0;     // that were asked by hand
    bool m_isAsking = false; // by hand
    std::unique_ptr<InstallerConnection> m_connection;
    TaskScope m_scope;
};

} // namespace palvera
