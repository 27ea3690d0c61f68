#include "transfers/Item.h"

namespace palvera {

namespace {

constexpr std::chrono::seconds sampleEvery{1};

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
    sent = sentNow;
    total = totalNow;
    rate = rateNow;
    if (!rate || !(*rate > 0))
        return;
    if (lastSample && now - *lastSample < sampleEvery)
        return;
    lastSample = now;
    trace.add(*rate);
}

QString nameOf(const Item::State& state)
{
    return std::visit(Overloaded{[](const Item::Waiting&) { return QStringLiteral("waiting"); },
                                 [](const Item::Running&) { return QStringLiteral("running"); },
                                 [](const Item::Retrying&) { return QStringLiteral("retrying"); },
                                 [](const Item::Paused&) { return QStringLiteral("paused"); },
                                 [](const Item::Failed&) { return QStringLiteral("failed"); },
                                 [](const Item::Done&) { return QStringLiteral("done"); },
                                 [](const Item::Stopped&) { return QStringLiteral("stopped"); }},
                      state);
}

QString troubleText(const Trouble& trouble)
{
    static const QStringList ordinals{QStringLiteral("Second"), QStringLiteral("Third"), QStringLiteral("Fourth"),
                                      QStringLiteral("Fifth"),  QStringLiteral("Sixth"), QStringLiteral("Seventh"),
                                      QStringLiteral("Eighth")};
    const auto ordinal = ordinals.value(trouble.attempt - 2);
    return ordinal.isEmpty() ? trouble.reason : QStringLiteral("%1 %2 try.").arg(trouble.reason, ordinal);
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
