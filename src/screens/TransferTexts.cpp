#include "screens/TransferTexts.h"

#include "files/Quantities.h"
#include "http/TransportError.h"
#include "service/APIError.h"
#include "transfers/Interrupted.h"

#include <QObject>

namespace palvera {

namespace {

std::exception_ptr failureOf(const Item::State& state)
{
    if (const auto* retrying = std::get_if<Item::Retrying>(&state))
        return retrying->failure;
    const auto* failed = std::get_if<Item::Failed>(&state);
    return failed ? failed->failure : nullptr;
}

bool isBusy(qint64 status)
{
    constexpr int timedOut = 408, tooMany = 429, serverFault = 500;
    return status == timedOut || status == tooMany || status >= serverFault;
}

QString plainTransport(const TransportError& error)
{
    switch (error.kind()) {
    case TransportError::Kind::noNetwork:
        return QObject::tr("This computer is not connected to a network.");
    case TransportError::Kind::connect:
        return QObject::tr("The platform cannot be reached.");
    case TransportError::Kind::idle:
    case TransportError::Kind::timedOut:
        return QObject::tr("The connection has come to a standstill.");
    case TransportError::Kind::broken:
        return QObject::tr("The connection was lost.");
    case TransportError::Kind::proxy:
    case TransportError::Kind::tls:
    case TransportError::Kind::untrusted:
    case TransportError::Kind::tooLarge:
        break;
    }
    return error.text();
}

} // namespace

QString amountText(const Item& item)
{
    if (item.total < 1)
        return item.sent > 0 ? QObject::tr("%1, size not known yet").arg(byteCountText(item.sent))
                             : QObject::tr("Size not known yet");
    return QObject::tr("%1 of %2").arg(byteCountText(item.sent), byteCountText(item.total));
}

std::optional<double> secondsLeft(const Item& item)
{
    if (item.rate.value_or(0) <= 0 || item.sent >= item.total)
        return {};
    return double(item.total - item.sent) / item.pace.value_or(*item.rate);
}

QString plainReason(const Item::State& state)
{
    auto failure = failureOf(state);
    if (auto error = failureAs<TransportError>(failure))
        return plainTransport(*error);
    auto error = failureAs<APIError>(failure);
    bool isComposed = error && error->message() == APIError::fromAnswer(int(error->status()), {}).message();
    if (isComposed && isBusy(error->status()))
        return QObject::tr("The platform is busy.");
    return messageOf(state);
}

QString troubleOf(const Item& item)
{
    if (auto reason = plainReason(item.state); !reason.isEmpty() || !item.isInFlight())
        return reason;
    return item.trouble ? troubleText(*item.trouble) : item.remark;
}

QString headlineOf(const Item& item)
{
    if (item.isPaused())
        return QObject::tr("Paused");
    if (std::holds_alternative<Item::Waiting>(item.state))
        return QObject::tr("Waiting");
    return item.kind == Item::Kind::upload ? QObject::tr("Uploading") : QObject::tr("Downloading");
}

QString troubleWithCountdown(const Item& item, Clock::WallTime now)
{
    const auto* retrying = std::get_if<Item::Retrying>(&item.state);
    if (!retrying)
        return troubleOf(item);
    return QObject::tr("%1 Trying again in %2").arg(plainReason(item.state), countdownText(retrying->until, now));
}

QString waitingText(const Item::Waiting& waiting)
{
    return waiting.why.isEmpty() ? QObject::tr("Waiting") : waiting.why;
}

QString technicalReason(const Item::State& state)
{
    auto error = failureAs<APIError>(failureOf(state));
    if (!error || error->status() == 0)
        return messageOf(state);
    return QStringLiteral("%1 (HTTP %2)").arg(messageOf(state)).arg(error->status());
}

QString stopTitle(const Item& item)
{
    return item.kind == Item::Kind::upload ? QObject::tr("Stop this upload?") : QObject::tr("Stop this download?");
}

QString stopMessage(const Item& item)
{
    const auto text = item.kind == Item::Kind::download
                          ? QObject::tr("%1 has come down already. It is kept on disk.")
                          : QObject::tr("%1 has gone up already. Stopping throws it away, so nothing half delivered "
                                        "is left in storage.");
    return text.arg(byteCountText(item.sent));
}

QString partsDoneText(const InterruptedUpload& upload)
{
    if (!upload.isBegun)
        return QObject::tr("Not begun");
    return QObject::tr("%1 of %2 parts done").arg(upload.journal.done.size()).arg(upload.journal.partCount);
}

QString countdownText(Clock::WallTime until, Clock::WallTime now)
{
    auto left = std::max<qint64>(0, std::chrono::ceil<std::chrono::seconds>(until - now).count());
    if (left < 60)
        return QObject::tr("%1 sec").arg(left);
    return QObject::tr("%1 min, %2 sec").arg(left / 60).arg(left % 60);
}

} // namespace palvera
