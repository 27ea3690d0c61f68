#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace palvera {

/// Lets the first of several answers through. Any thread.
class Once {
public:
    /// Whether nobody was here before.
    bool claim()
    {
        const std::lock_guard guard(m_lock);
        return !std::exchange(m_done, true);
    }

private:
    std::mutex m_lock;
    bool m_done = false; // guarded by m_lock
};

/// What the feed said of an image.
struct AnnouncedBuild {
    QString version;
    QString build;

    bool operator==(const AnnouncedBuild&) const = default;
};

/// What the installer does: a program with more rights than this one, that judges what it is given by itself. Each
/// operation calls its reply once, with a text for the user or with none for success, unless the installer does not
/// answer; from the event loop or within the call. `target` is the root of the copy that runs, see ProgramCopy.
class PVInstallerProtocol {
public:
    using Reply = std::function<void(const QString& error)>;
    virtual ~PVInstallerProtocol() = default;

    /// Checks the image at the path `image` and stages its build beside the one that runs.
    virtual void prepareWithImage(const QString& image, const QString& target, const AnnouncedBuild& announced,
                                  Reply reply) = 0;
    /// Puts the staged build in the place of the one that runs.
    virtual void installWithTarget(const QString& target, Reply reply) = 0;
};

/// Why the installer did not answer.
struct InstallerTrouble {
    bool isMissing = false; ///< nobody on the bus does what an installer does
    QString description;

    bool operator==(const InstallerTrouble&) const = default;
};

/// A connection to the installer. Main thread.
class InstallerConnection {
public:
    virtual ~InstallerConnection() = default;

    /// The installer's proxy; valid as long as the connection. `failed` is called at most once for each operation that
    /// gets no answer, from the event loop or within the call.
    virtual std::unique_ptr<PVInstallerProtocol> remoteObject(std::function<void(const InstallerTrouble&)> failed) = 0;
    /// Called when the connection breaks, from inside of it: it must not be destroyed there.
    std::function<void()> invalidated;
};

/// By D-Bus: the image goes as an open file, since the installer may not be able to follow a path of the user's (a home
/// on the network, an encrypted one) and must not be led by it to where the user may not read.
class BusInstallerConnection final : public QObject, public InstallerConnection {
    Q_OBJECT

public:
    enum class Bus { system, session };
    /// `program` is the name that the bus knows the program by; the installer's begins with it.
    BusInstallerConnection(QString program, Bus bus);
    /// Over the bus at `address`.
    BusInstallerConnection(QString program, const QString& address);
    ~BusInstallerConnection() override;

    std::unique_ptr<PVInstallerProtocol> remoteObject(std::function<void(const InstallerTrouble&)> failed) override;

private Q_SLOTS:
    void breakOff();

private:
    void watch();

    const QString m_program;
    const QString m_connection;
};

} // namespace palvera
