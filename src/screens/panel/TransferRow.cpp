#include "screens/panel/TransferRow.h"

#include "files/Quantities.h"
#include "screens/TransferTexts.h"
#include "text/VisibleText.h"

namespace palvera {

namespace {

QStringList figuresOf(const Item& item)
{
    QStringList figures{amountText(item)};
    if (item.rate)
        figures.append(*item.rate > 0 ? rateText(*item.rate) : QStringLiteral("—"));
    if (auto left = secondsLeft(item))
        figures.append(QObject::tr("%1 left").arg(durationText(*left)));
    return figures;
}

/// What is said in the place of figures.
struct Status {
    const Item& item;
    Clock::WallTime now;

    QString operator()(const Item::Waiting& waiting) const { return withAmount(waitingText(waiting)); }
    QString operator()(const Item::Running&) const { return troubleOf(item); }
    QString operator()(const Item::Retrying&) const { return troubleWithCountdown(item, now); }
    QString operator()(const Item::Paused&) const { return withAmount(QObject::tr("Paused")); }
    QString operator()(const Item::Failed&) const { return plainReason(item.state); }
    QString operator()(const Item::Done&) const { return QObject::tr("Done · %1").arg(byteCountText(item.total)); }
    QString operator()(const Item::Stopped&) const { return QObject::tr("Stopped"); }

    QString withAmount(const QString& text) const
    {
        return item.sent > 0 ? QStringLiteral("%1 · %2").arg(text, amountText(item)) : text;
    }
};

QString spokenOf(const TransferRow& row, const Item& item)
{
    auto what = item.kind == Item::Kind::upload ? QObject::tr("upload") : QObject::tr("download");
    QStringList words{row.title, row.name, what};
    if (row.state == TransferState::Value::Running)
        words.append(QObject::tr("running"));
    else if (row.state == TransferState::Value::Failed)
        words.append(QObject::tr("failed")); // of others, the status says it
    if (row.state == TransferState::Value::Running && !row.percent.isEmpty())
        words.append(QObject::tr("%1 percent").arg(percentOf(item.sent, item.total)));
    if (row.state == TransferState::Value::Running)
        words += figuresOf(item);
    if (!row.status.isEmpty())
        words.append(row.status);
    return words.join(QStringLiteral(", "));
}

} // namespace

TransferRow transferRow(const Item& item, Clock::WallTime now)
{
    const bool isUpload = item.kind == Item::Kind::upload;
    const bool isRunning = std::holds_alternative<Item::Running>(item.state);
    TransferRow row{.key = item.id.toString(QUuid::WithoutBraces),
                    .symbol =
                        isUpload ? QStringLiteral("arrow.up.circle.fill") : QStringLiteral("arrow.down.circle.fill"),
                    .title = visibleText(item.label.isEmpty() ? item.name : item.label),
                    .titleName = visibleText(item.titleName.value_or(QString())),
                    .name = visibleText(item.name),
                    .state = TransferState::Value(item.state.index()),
                    .isInFlight = item.isInFlight(),
                    .fraction = fractionOf(item.sent, item.total),
                    .percent = item.total < 1 ? QString() : percentText(percentOf(item.sent, item.total)),
                    .figures = isRunning ? figuresOf(item).join(QStringLiteral(" · ")) : QString(),
                    .status = std::visit(Status{.item = item, .now = now}, item.state),
                    .detail = technicalReason(item.state)};
    if (item.trace.samples.size() >= 2)
        row.samples = item.trace.samples;
    row.graphFraction = isRunning ? row.fraction : 1;
    if (row.status.contains(row.detail))
        row.detail.clear();
    row.spoken = spokenOf(row, item);
    return row;
}

} // namespace palvera
