#pragma once

#include "async/Clock.h"
#include "transfer/TransferTarget.h"
#include "transfer/Trouble.h"
#include "transfers/Trace.h"

#include <QUuid>

#include <exception>
#include <optional>
#include <variant>

namespace palvera {

/// One transfer as the user sees it. A plain value, identified by `id`.
struct Item {
    enum class Kind { upload, download };

    /// For others to end, before it begins or goes on, or for the reason in `why`.
    struct Waiting {
        QString why = {};

        bool operator==(const Waiting&) const = default;
    };
    struct Running {
        bool operator==(const Running&) const = default;
    };
    /// Failed with `message`, and tried again at `until`.
    struct Retrying {
        QString message;
        Clock::WallTime until;
        std::exception_ptr failure = {}; ///< as of `Failed`

        bool operator==(const Retrying&) const = default;
    };
    /// By the user, until they have it go on.
    struct Paused {
        bool operator==(const Paused&) const = default;
    };
    struct Failed {
        QString message;
        std::exception_ptr failure = {}; ///< for callers that must tell kinds apart; see failureAs

        bool operator==(const Failed&) const = default;
    };
    struct Done {
        bool operator==(const Done&) const = default;
    };
    struct Stopped {
        bool operator==(const Stopped&) const = default;
    };
    using State = std::variant<Waiting, Running, Retrying, Paused, Failed, Done, Stopped>;

    QUuid id;
    Kind kind = Kind::upload;
    TransferTarget target;
    QString name;                          ///< of the file, without a folder
    QString file = {};                     ///< path of what is sent, or of what is written once that is known
    QString label = {};                    ///< caption
    std::optional<QString> titleName = {}; ///< second caption
    QString client = {};                   ///< the organisation's name; empty where it is not known
    State state = Waiting{};
    std::optional<Trouble> trouble = {};          ///< why it does not move, while it runs and does not
    QString remark = {};                          ///< the latest that the user should know although it goes on
    qint64 sent = 0;                              ///< bytes transferred so far
    qint64 total = 0;                             ///< bytes in all; 0 while nobody knows
    std::optional<double> rate = {};              ///< bytes per second, as last reported
    Trace trace = {};                             ///< the speed so far
    std::optional<Clock::Moment> lastSample = {}; ///< when `trace` last took a reading
    std::optional<QString> journalKey = {};       ///< of an upload

    /// Whether it waits, runs, is about to be tried again or is paused.
    bool isInFlight() const;
    bool isPaused() const { return std::holds_alternative<Paused>(state); }
    /// Takes in what an engine reports at `now`. The trace takes one reading a second at most, and none without speed.
    void apply(qint64 sentNow, qint64 totalNow, std::optional<double> rateNow, Clock::Moment now);

    bool operator==(const Item&) const = default;
};

/// The state in one word: "waiting", "running", "retrying", "paused", "failed", "done" or "stopped".
QString nameOf(const Item::State& state);
/// "Storage answers 503. Third try."
QString troubleText(const Trouble& trouble);
/// What went wrong, or what is waited for, where there is something to say.
QString messageOf(const Item::State& state);

} // namespace palvera
