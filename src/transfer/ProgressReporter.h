#pragma once

#include "async/Clock.h"
#include "async/Event.h"
#include "transfer/Board.h"
#include "transfer/UploadProtocol.h"

#include <functional>
#include <optional>

namespace palvera {

/// How far an upload is.
struct UploadProgress {
    qint64 sent = 0;  ///< bytes settled or acknowledged, never more than `total`
    qint64 total = 0; ///< bytes of the file
    std::optional<double> bytesPerSecond =
        {}; ///< absent while the window it is measured over is half a second or younger

    std::optional<Trouble> trouble = {}; ///< while nothing moves

    bool operator==(const UploadProgress&) const = default;
};

/// The average rate since the last report to the platform, when the window restarts.
class RateWindow {
public:
    RateWindow(Clock::Moment now, qint64 sent);

    void restart(Clock::Moment now, qint64 sent);
    /// Bytes per second, or none while the window is half a second old or younger.
    std::optional<double> rate(Clock::Moment now, qint64 sent) const;
    /// Since it last restarted.
    Clock::Moment::duration age(Clock::Moment now) const { return now - m_start; }

private:
    Clock::Moment m_start;
    qint64 m_baseline;
};

/// Watches one upload run's board: tells the caller how far it is at every tick, has the journal saved when parts were
/// confirmed, and tells the platform two seconds after it last answered. A slow disk or platform delays only its own
/// saves or reports: both run beside the ticks, one of each at a time. Lives on one serial executor.
class ProgressReporter {
public:
    struct Cadence {
        std::chrono::nanoseconds redrawEvery;
        std::chrono::nanoseconds reportEvery;
    };
    using OnProgress = std::function<void(const UploadProgress&)>;
    using SaveParts = std::function<Task<void>(ConfirmedParts)>;
    using Report = std::function<Task<void>(ProgressBody)>;

    /// `report` tells the platform; none for uploads that it hears nothing of. Its failures are dropped. Everything
    /// referred to outlives the run.
    ProgressReporter(Executor executor, Clock& clock, const Board& board, qint64 total, Cadence cadence,
                     OnProgress onProgress, SaveParts saveParts, Report report);

    /// Runs until cancelled, and then ends without a failure and with nothing of it in flight.
    Task<void> run();

private:
    Task<void> tick();
    Task<void> saveWhenTold();
    Task<void> reportWhenTold();

    Clock& m_clock;
    const Board& m_board;
    const qint64 m_total;
    const Cadence m_cadence;
    const OnProgress m_onProgress;
    const SaveParts m_saveParts;
    const Report m_report;
    Event m_save;
    Event m_reportDue;
    std::optional<ProgressBody> m_nextReport; // empty while a report is under way
    bool m_reporting = false;
    RateWindow m_window;
    Clock::Moment m_reported; // when the platform last answered, or the run began
    std::size_t m_savedParts;
};

} // namespace palvera
