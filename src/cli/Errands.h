#pragma once

#include "async/CancelFlag.h"
#include "async/Event.h"
#include "cli/Errand.h"
#include "cli/Output.h"

#include <QHash>
#include <QObject>
#include <QSet>

namespace palvera::cli {

/// Carries out all that one command was asked for, a few at once, and says how each goes and ends. Main thread.
class Errands {
public:
    /// What it works with; all of it outlives it.
    struct Environment {
        Transfers& transfers;
        Output& output;
        Clock& clock;
        Executor mainThread;
        std::shared_ptr<CancelFlag> stop;   ///< stopped when the user interrupts the program
        std::shared_ptr<CancelFlag> cutOff; ///< stopped here when what is in flight takes too long to end
        bool stopOnInterrupt = false;       ///< an interruption gives up what is in flight
    };
    static constexpr int mostAtOnce = 3; ///< each has up to eight connections

    Errands(Environment environment, std::vector<std::unique_ptr<Errand>> errands);

    /// Ends when all have ended, with the code of the one that fared worst. An interruption begins no more, leaves
    /// everything such that it can be gone on with, or gives it up, and is the worst of all. Throws nothing, and is not
    /// to be cancelled otherwise.
    Task<ExitCode> carryOut();

private:
    /// An errand that was begun.
    struct Begun {
        Errand* errand = nullptr;
        Clock::Moment at;
        std::optional<Item> shown = {}; ///< as it was when it was last spoken of
    };

    Task<void> beginMore();
    Task<void> begin(Errand& errand);
    void show(const QUuid& id);
    void conclude(const QUuid& id);
    ExitCode sayEnd(const Errand& errand, const Item& item, double seconds);
    ExitCode sayFailed(const Errand& errand, const Item& item, const Item::Failed& failed);
    ExitCode sayDoubt(const Errand& errand);
    ExitCode sayInterrupted(const Errand& errand, const Item* item);
    Task<void> endEarly();
    Task<void> cutOffLater();

    const Environment m_environment;
    const std::vector<std::unique_ptr<Errand>> m_errands;
    std::size_t m_next = 0;
    QHash<QUuid, Begun> m_begun;
    QSet<int> m_codes; // of those that have ended
    ExitCode m_worst = ExitCode::done;
    Event m_ended;
    QObject m_listener;
};

} // namespace palvera::cli
