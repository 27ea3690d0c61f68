#include "transfers/Item.h"

#include <QObject>

namespace palvera {

namespace {

constexpr std::chrono::seconds sampleEvery{1};
/// An engine that is at work reports once a second at least.
constexpr std::chrono::seconds longestGap{2};
/// At first a line gets up to speed and receivers fill their buffers, which tells nothing of what follows.
constexpr std::chrono::seconds firstWindow{2};

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};

} // namespace

bool Item::isInFlight() const
{
    return std::holds_alternative<Waiting>(state) || std::holds_alternative<Running>(state) ||
           std::holds_alternative<Retrying>(state) || isPaused();
}

void Item::apply(qint64 sentNow, qint64 totalNow, std::optional<double> rateNow, Clock::Moment now)
{
    if (isPaused()) // what its engine says while it ends
        return;
    if (std::holds_alternative<Retrying>(state))
        state = Running{};
    if (!rate || !lastReport || now - *lastReport >= longestGap) {
        rate.reset();
        pace.reset();
        meter.end();
        steadyFrom = now + firstWindow;
    }
    lastReport = now;
    const bool hasFallen = sentNow < sent; // by what a failed attempt had sent
    sent = sentNow;
    total = totalNow;
    rate = rateNow ? rateNow : rate;
    if (now < steadyFrom)
        return;
    if (hasFallen || rate == 0.0 || !meter.began())
        meter.begin(now, sent);
    const auto measured = meter.pace(now, sent);
    pace = measured && measured->bytesPerSecond > 0 ? std::optional(measured->bytesPerSecond) : std::nullopt;
    if (!rateNow || !(*rateNow > 0) || (lastSample && now - *lastSample < sampleEvery))
        return;
    lastSample = now;
    trace.add(*rateNow);
}

QString nameOf(const Item::State& state)
{
    return std::visit(Overloaded{[](const Item::Waiting&) { return QObject::tr("waiting"); },
                                 [](const Item::Running&) { return QObject::tr("running"); },
                                 [](const Item::Retrying&) { return QObject::tr("retrying"); },
                                 [](const Item::Paused&) { return QObject::tr("paused"); },
                                 [](const Item::Failed&) { return QObject::tr("failed"); },
                                 [](const Item::Done&) { return QObject::tr("done"); },
                                 [](const Item::Stopped&) { return QObject::tr("stopped"); }},
                      state);
}

QString troubleText(const Trouble& trouble)
{
    const QStringList tries{QObject::tr("Second try."), QObject::tr("Third try."), QObject::tr("Fourth try."),
                            QObject::tr("Fifth try."),  QObject::tr("Sixth try."), QObject::tr("Seventh try."),
                            QObject::tr("Eighth try.")};
    const auto said = tries.value(trouble.attempt - 2);
    return said.isEmpty() ? trouble.reason : QStringLiteral("%1 %2").arg(trouble.reason, said);
}

QString messageOf(const Item::State& state)
{
    if (const auto* retrying = std::get_if<Item::Retrying>(&state))
        return retrying->message;
    if (const auto* failed = std::get_if<Item::Failed>(&state))
        return failed->message;
    if (const auto* waiting = std::get_if<Item::Waiting>(&state))
        return waiting->why;
    return {};
}

} // namespace palvera
