// What the model keeps, and what its tasks change of it.

#include "transfers/Transfers.h"

#include "platform/RunOn.h"
#include "platform/SleepInhibitor.h"

namespace palvera {

void Transfers::change(const QUuid& id, const std::function<void(Item&)>& change)
{
    // Taken from the change itself: whoever hears of it may change the item again before this goes on.
    bool wasInFlight = false;
    bool isInFlight = false;
    bool differs = m_model.change(id, [&](Item& item) {
        wasInFlight = item.isInFlight();
        change(item);
        isInFlight = item.isInFlight();
    });
    if (!differs)
        return;
    if (isInFlight != wasInFlight)
        updateInFlight(isInFlight ? +1 : -1);
    Q_EMIT itemChanged(id);
}

void Transfers::setState(const QUuid& id, Item::State state)
{
    change(id, [&](Item& item) { item.state = std::move(state); });
}

void Transfers::apply(const QUuid& id, qint64 sent, qint64 total, std::optional<double> rate)
{
    change(id, [&](Item& item) { item.apply(sent, total, rate, m_environment.clock.now()); });
}

void Transfers::remove(const QUuid& id)
{
    const auto* item = find(id);
    if (!item)
        return;
    bool wasInFlight = item->isInFlight();
    m_model.remove(id);
    if (wasInFlight)
        updateInFlight(-1);
    Q_EMIT itemRemoved(id);
}

void Transfers::ended(const QUuid& id)
{
    auto live = m_live.take(id);
    if (live.journalKey)
        loadJournalsSoon();
    Q_EMIT itemEnded(id);
}

void Transfers::countUpload()
{
    ++m_uploadsFinished;
    Q_EMIT uploadsFinishedChanged();
}

void Transfers::updateInFlight(int difference)
{
    m_inFlight += difference;
    if (m_inFlight > 0)
        m_environment.sleep.hold(QStringLiteral("Files are being transferred."));
    else
        m_environment.sleep.release();
    updateInterrupted();
    Q_EMIT inFlightChanged();
}

std::optional<Doubt> Transfers::doubt() const
{
    return m_doubts.isEmpty() ? std::nullopt : std::optional(m_doubts.first());
}

QString Transfers::doubtMessage() const
{
    return m_doubts.isEmpty() ? QString() : m_doubts.first().message;
}

void Transfers::raise(const QUuid& id, Doubt doubt)
{
    remove(id);
    m_doubts.append(std::move(doubt));
    if (m_doubts.size() == 1)
        Q_EMIT doubtChanged();
}

std::optional<QUuid> Transfers::confirmDoubt()
{
    auto answered = doubt();
    if (!answered)
        return {};
    dismissDoubt();
    return addUpload({.file = answered->file,
                      .orgId = answered->orgId,
                      .projectId = answered->projectId,
                      .deliverable = answered->deliverable,
                      .confirmed = true});
}

void Transfers::dismissDoubt()
{
    if (m_doubts.isEmpty())
        return;
    m_doubts.removeFirst();
    Q_EMIT doubtChanged();
}

Task<void> Transfers::loadJournals()
{
    return readJournals(this, m_environment.journals, m_reading);
}

Task<void> Transfers::readJournals(QPointer<Transfers> model, const JournalStore& store, Executor disk)
{
    std::vector<Journal> journals;
    co_await callOn(disk, [&] { journals = store.loadJournals(); });
    if (!model)
        co_return;
    model->m_journals = std::move(journals);
    model->updateInterrupted();
}

void Transfers::loadJournalsSoon()
{
    spawn(loadJournals());
}

void Transfers::mayBeResumedAgain(const QString& key)
{
    m_resuming.remove(key);
}

void Transfers::updateInterrupted()
{
    std::vector<Journal> interrupted;
    std::ranges::copy_if(m_journals, std::back_inserter(interrupted), [this](const Journal& journal) {
        return !m_resuming.contains(journal.key) && !isBusy(journal.key);
    });
    if (interrupted == m_interrupted)
        return;
    m_interrupted = std::move(interrupted);
    Q_EMIT journalsChanged();
}

bool Transfers::isBusy(const QString& journalKey) const
{
    for (auto live = m_live.begin(); live != m_live.end(); ++live) {
        if (live->journalKey != journalKey)
            continue;
        const auto* item = find(live.key());
        if (live->flag->isStopped() || (item && item->isInFlight()))
            return true;
    }
    return false;
}

bool Transfers::isBeingGivenUp(const QString& journalKey, const QUuid& id) const
{
    auto number = m_live.value(id).number;
    return std::ranges::any_of(m_live, [&](const Live& other) {
        return other.number < number && other.journalKey == journalKey && other.flag->isStopped();
    });
}

void Transfers::retryAtOnce()
{
    auto now = m_environment.clock.wallNow();
    const auto waits = m_waits;
    for (auto wait = waits.begin(); wait != waits.end(); ++wait) {
        change(wait.key(), [now](Item& item) {
            if (auto* retrying = std::get_if<Item::Retrying>(&item.state))
                retrying->until = now;
        });
        (*wait)->set();
    }
}

} // namespace palvera
