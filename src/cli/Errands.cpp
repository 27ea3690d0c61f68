#include "cli/Errands.h"

#include "async/TaskGroup.h"
#include "files/FileError.h"
#include "transfers/Transfers.h"

#include <boost/asio/this_coro.hpp>

#include <QDateTime>
#include <QFileInfo>

namespace palvera::cli {

namespace asio = boost::asio;

namespace {

/// How long chunks in flight may take to arrive whole after an interruption.
constexpr std::chrono::seconds patience{5};

QJsonObject eventOf(const QString& event, const Errand& errand)
{
    return {{QStringLiteral("event"), event}, {QStringLiteral("key"), errand.key()}};
}

QString nameOf(const Item& item)
{
    return item.file.isEmpty() ? item.name : QFileInfo(item.file).fileName();
}

void sayRetrying(const Errand& errand, const Item& item, const Item::Retrying& retrying, Clock& clock, Output& output)
{
    using namespace std::chrono;
    auto left = ceil<seconds>(retrying.until - clock.wallNow()).count();
    auto until =
        QDateTime::fromMSecsSinceEpoch(duration_cast<milliseconds>(retrying.until.time_since_epoch()).count(), Qt::UTC);
    auto event = eventOf(QStringLiteral("retrying"), errand);
    event[QStringLiteral("message")] = retrying.message;
    event[QStringLiteral("until")] = until.toString(Qt::ISODate);
    output.say({}, event);
    output.remark(QStringLiteral("“%1”: %2 Trying again in %3 s.").arg(item.name, retrying.message).arg(left));
}

} // namespace

Errands::Errands(Environment environment, std::vector<std::unique_ptr<Errand>> errands)
    : m_environment(std::move(environment)), m_errands(std::move(errands)), m_ended(m_environment.mainThread)
{
    QObject::connect(&m_environment.transfers, &Transfers::itemChanged, &m_listener,
                     [this](const QUuid& id) { show(id); });
    QObject::connect(&m_environment.transfers, &Transfers::itemEnded, &m_listener,
                     [this](const QUuid& id) { conclude(id); });
}

Task<ExitCode> Errands::carryOut()
{
    // What interrupts the program also cancels its command, which is to end in its own time here.
    co_await asio::this_coro::reset_cancellation_state(asio::disable_cancellation());
    const auto& stop = m_environment.stop;
    co_await beginMore();
    while (!m_begun.isEmpty() && !stop->isStopped()) {
        co_await firstOf(untilStopped(stop), m_ended.wait());
        co_await beginMore();
    }
    if (stop->isStopped())
        co_await endEarly();
    for (auto code : m_codes)
        m_environment.output.remark(adviceFor(ExitCode(code)));
    co_return m_worst;
}

Task<void> Errands::beginMore()
{
    while (m_next < m_errands.size() && m_begun.size() < mostAtOnce && !m_environment.stop->isStopped())
        co_await begin(*m_errands[m_next++]);
}

Task<void> Errands::begin(Errand& errand)
{
    try {
        if (auto id = co_await errand.begin(m_environment.transfers)) {
            m_begun.insert(*id, {.errand = &errand, .at = m_environment.clock.now()});
            m_environment.output.say(errand.beginning(), {});
            m_environment.output.expectProgress(errand.key());
        } else {
            m_environment.output.remark(QStringLiteral("“%1” is on its way already.").arg(errand.key()));
        }
    } catch (const FileError& error) {
        m_worst = worse(m_worst, ExitCode::failed);
        m_environment.output.fail(error.text(), {{QStringLiteral("key"), errand.key()}});
    }
}

void Errands::show(const QUuid& id)
{
    auto begun = m_begun.find(id);
    const auto* item = m_environment.transfers.find(id);
    if (begun == m_begun.end() || !item)
        return;
    auto before = std::exchange(begun->shown, *item);
    const auto* retrying = std::get_if<Item::Retrying>(&item->state);
    if (retrying && (!before || before->state != item->state))
        return sayRetrying(*begun->errand, *item, *retrying, m_environment.clock, m_environment.output);
    if (item->trouble && (!before || before->trouble != item->trouble))
        m_environment.output.trouble(begun->errand->key(), *item->trouble);
    if (!item->remark.isEmpty() && (!before || before->remark != item->remark))
        m_environment.output.remark(item->remark);
    bool isMoving = std::holds_alternative<Item::Running>(item->state) && item->total > 0;
    auto figures = [](const Item& one) { return std::tuple(one.sent, one.total, one.rate); };
    if (isMoving && (!before || figures(*before) != figures(*item)))
        m_environment.output.progress(begun->errand->key(), {.name = nameOf(*item),
                                                             .sent = item->sent,
                                                             .total = item->total,
                                                             .bytesPerSecond = item->rate,
                                                             .pace = item->pace});
}

void Errands::conclude(const QUuid& id)
{
    if (!m_begun.contains(id))
        return;
    auto begun = m_begun.take(id);
    m_environment.output.endProgress(begun.errand->key());
    const auto* item = m_environment.transfers.find(id);
    auto code = item ? sayEnd(*begun.errand, *item, secondsBetween(begun.at, m_environment.clock.now()))
                     : sayDoubt(*begun.errand);
    m_codes.insert(int(code));
    m_worst = worse(m_worst, code);
    m_ended.set();
}

ExitCode Errands::sayEnd(const Errand& errand, const Item& item, double seconds)
{
    if (const auto* failed = std::get_if<Item::Failed>(&item.state))
        return sayFailed(errand, item, *failed);
    if (std::holds_alternative<Item::Done>(item.state)) {
        auto event = errand.doneRecord(item);
        event[QStringLiteral("event")] = QStringLiteral("done");
        event[QStringLiteral("key")] = errand.key();
        event[QStringLiteral("seconds")] = seconds;
        m_environment.output.say(errand.doneText(item, seconds), event);
        return ExitCode::done;
    }
    if (std::holds_alternative<Item::Stopped>(item.state)) {
        m_environment.output.say(QStringLiteral("Stopped “%1”").arg(item.name),
                                 eventOf(QStringLiteral("stopped"), errand));
        return ExitCode::interrupted;
    }
    return sayInterrupted(errand, &item);
}

ExitCode Errands::sayFailed(const Errand& errand, const Item& item, const Item::Failed& failed)
{
    m_environment.output.fail(failed.message, {{QStringLiteral("key"), errand.key()}});
    if (auto hint = errand.howToGoOn(item); !hint.isEmpty())
        m_environment.output.remark(hint);
    return exitCodeFor(failed.failure);
}

/// The platform's question has taken the place of the errand's item.
ExitCode Errands::sayDoubt(const Errand& errand)
{
    m_environment.output.fail(m_environment.transfers.doubt()->message, {{QStringLiteral("key"), errand.key()}});
    m_environment.transfers.dismissDoubt();
    m_environment.output.remark(QStringLiteral("To send it all the same: ") + errand.confirmingCommand());
    return ExitCode::confirmationNeeded;
}

ExitCode Errands::sayInterrupted(const Errand& errand, const Item* item)
{
    m_environment.output.say({}, eventOf(QStringLiteral("interrupted"), errand));
    if (auto hint = item ? errand.howToGoOn(*item) : QString(); !hint.isEmpty())
        m_environment.output.remark(hint);
    return ExitCode::interrupted;
}

Task<void> Errands::endEarly()
{
    m_worst = ExitCode::interrupted;
    m_environment.output.remark(QStringLiteral("palvera-cli: Interrupted."));
    if (m_environment.stopOnInterrupt)
        for (const auto& id : m_begun.keys())
            m_environment.transfers.stop(id);
    co_await firstOf(m_environment.transfers.suspend(), cutOffLater());
    for (; m_next < m_errands.size(); ++m_next)
        sayInterrupted(*m_errands[m_next], nullptr);
}

Task<void> Errands::cutOffLater()
{
    co_await m_environment.clock.sleep(patience);
    m_environment.cutOff->stop();
    co_await m_environment.clock.sleepUntil(Clock::Moment::max());
}

} // namespace palvera::cli
