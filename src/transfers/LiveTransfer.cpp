#include "transfers/LiveTransfer.h"

#include "async/TaskGroup.h"

namespace palvera {

LiveTransfer::LiveTransfer(Executor main, std::optional<QString> journalKey, qint64 number)
    : m_main(std::move(main)),
      m_journalKey(std::move(journalKey)),
      m_number(number),
      m_changed(std::make_shared<Event>(m_main))
{}

void LiveTransfer::stop()
{
    m_flag->stop();
    m_run->stop();
    m_changed->set();
}

void LiveTransfer::pause()
{
    if (std::exchange(m_isPaused, true))
        return;
    m_run->stop();
    if (!m_journalKey)
        m_cut->stop();
}

void LiveTransfer::goOn()
{
    if (!std::exchange(m_isPaused, false) || isStopped())
        return;
    m_run = std::make_shared<CancelFlag>();
    if (!m_journalKey)
        m_cut = std::make_shared<CancelFlag>();
    m_changed->set();
}

Task<void> LiveTransfer::whilePaused()
{
    const auto changed = m_changed;
    while (isPaused())
        co_await changed->wait();
}

void LiveTransfer::suspend()
{
    if (isStopped())
        return;
    m_isSuspended = true;
    stop();
}

Task<void> LiveTransfer::sleep(Task<void> delay)
{
    const auto wait = std::make_shared<Event>(m_main);
    m_wait = wait;
    co_await firstOf(untilStopped(m_run), firstOf(wait->wait(), std::move(delay)));
}

void LiveTransfer::hurry()
{
    if (m_wait)
        m_wait->set();
}

std::shared_ptr<LiveTransfer> LiveTransfers::add(const QUuid& id, std::optional<QString> journalKey)
{
    auto added = std::make_shared<LiveTransfer>(m_main, std::move(journalKey), ++m_begun);
    m_all.insert(id, added);
    return added;
}

bool LiveTransfers::isBusy(const QString& journalKey, const std::function<bool(const QUuid&)>& isInFlight) const
{
    for (auto live = m_all.begin(); live != m_all.end(); ++live)
        if ((*live)->journalKey() == journalKey && ((*live)->isStopped() || isInFlight(live.key())))
            return true;
    return false;
}

bool LiveTransfers::isBeingGivenUp(const QString& journalKey, const QUuid& id) const
{
    const auto own = find(id);
    return own && std::ranges::any_of(m_all, [&](const auto& other) {
               return other->number() < own->number() && other->journalKey() == journalKey && other->isStopped();
           });
}

bool LiveTransfers::isBeingStopped(const QUuid& id) const
{
    const auto live = find(id);
    return live && live->isStopped();
}

void LiveTransfers::suspendAll()
{
    for (const auto& live : m_all) {
        if (!live->journalKey())
            live->cut();
        live->suspend();
    }
}

void LiveTransfers::cutAll()
{
    for (const auto& live : m_all)
        live->cut();
}

} // namespace palvera
