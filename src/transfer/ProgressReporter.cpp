#include "transfer/ProgressReporter.h"

#include "async/TaskGroup.h"

#include <boost/asio/this_coro.hpp>

namespace palvera {

using namespace std::chrono_literals;

RateWindow::RateWindow(Clock::Moment now, qint64 sent) : m_start(now), m_baseline(sent) {}

void RateWindow::restart(Clock::Moment now, qint64 sent)
{
    m_start = now;
    m_baseline = sent;
}

std::optional<double> RateWindow::rate(Clock::Moment now, qint64 sent) const
{
    if (age(now) <= 500ms)
        return std::nullopt;
    return sent < m_baseline ? 0.0 : double(sent - m_baseline) / secondsBetween(m_start, now);
}

ProgressReporter::ProgressReporter(Executor executor, Clock& clock, const Board& board, qint64 total, Cadence cadence,
                                   OnProgress onProgress, SaveParts saveParts, Report report)
    : m_clock(clock),
      m_board(board),
      m_total(total),
      m_cadence(cadence),
      m_onProgress(std::move(onProgress)),
      m_saveParts(std::move(saveParts)),
      m_report(std::move(report)),
      m_save(executor),
      m_reportDue(executor),
      m_window(clock.now(), board.sent()),
      m_reported(clock.now()),
      m_savedParts(board.doneCount())
{}

Task<void> ProgressReporter::run()
{
    std::vector<Task<void>> parts;
    parts.push_back(tick());
    parts.push_back(saveWhenTold());
    if (m_report)
        parts.push_back(reportWhenTold());
    auto failures = co_await joinAll(std::move(parts));
    for (const auto& failure : failures)
        if (failure && !isCancellation(failure))
            std::rethrow_exception(failure);
}

Task<void> ProgressReporter::tick()
{
    for (;;) {
        co_await m_clock.sleep(m_cadence.redrawEvery);
        auto now = m_clock.now();
        qint64 sent = m_board.sent();
        auto rate = m_window.rate(now, sent);
        m_onProgress({.sent = sent, .total = m_total, .bytesPerSecond = rate});
        if (m_board.doneCount() != m_savedParts)
            m_save.set();
        if (m_window.age(now) < m_cadence.reportEvery)
            continue;
        if (m_report && !m_reporting && now - m_reported >= m_cadence.reportEvery) {
            m_nextReport = ProgressBody{.bytesSent = sent, .bytesTotal = m_total, .bytesPerSecond = rate};
            m_reportDue.set();
        }
        m_window.restart(now, sent);
    }
}

Task<void> ProgressReporter::saveWhenTold()
{
    for (;;) {
        co_await m_save.wait();
        auto done = m_board.done();
        m_savedParts = done.size();
        co_await m_saveParts(std::move(done));
    }
}

Task<void> ProgressReporter::reportWhenTold()
{
    for (;;) {
        co_await m_reportDue.wait();
        m_reporting = true;
        auto report = m_report(*std::exchange(m_nextReport, std::nullopt));
        co_await outcomeOf(std::move(report)); // the platform's loss, not the upload's
        m_reporting = false;
        m_reported = m_clock.now();
        m_window.restart(m_reported, m_board.sent());
    }
}

} // namespace palvera
