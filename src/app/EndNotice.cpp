#include "app/EndNotice.h"

#include "desktop/Notices.h"
#include "text/VisibleText.h"
#include "transfers/Transfers.h"

namespace palvera {

EndNotice::EndNotice(Transfers& transfers, Notices& notices, std::function<bool()> isWatched)
    : m_transfers(transfers), m_notices(notices), m_isWatched(std::move(isWatched))
{
    connect(&transfers, &Transfers::itemAdded, this, [this](const QUuid& id) { m_moved.append(id); });
    connect(&transfers, &Transfers::inFlightChanged, this, &EndNotice::look);
}

std::optional<EndNotice::Text> EndNotice::textFor(const Ends& ends, const QString& name)
{
    if (ends.done + ends.failed == 0)
        return {};
    if (ends.failed == 0)
        return Text{QObject::tr("Transfers finished"), ends.done == 1
                                                           ? QObject::tr("“%1” is done.").arg(name)
                                                           : QObject::tr("%n files are done.", nullptr, ends.done)};
    if (ends.done == 0)
        return Text{QObject::tr("Transfers failed"),
                    ends.failed == 1 ? QObject::tr("“%1” could not be transferred.").arg(name)
                                     : QObject::tr("%n files could not be transferred.", nullptr, ends.failed)};
    return Text{QObject::tr("Transfers finished, some failed"),
                QObject::tr("Done: %1. Could not be transferred: %2.").arg(ends.done).arg(ends.failed)};
}

void EndNotice::look()
{
    if (m_transfers.inFlightCount() > 0)
        return;
    Ends ends;
    QString name;
    for (const auto& id : std::exchange(m_moved, {})) {
        const auto* item = m_transfers.find(id);
        if (!item || std::holds_alternative<Item::Stopped>(item->state))
            continue;
        ++(std::holds_alternative<Item::Done>(item->state) ? ends.done : ends.failed);
        name = visibleText(item->name);
    }
    auto text = textFor(ends, name);
    if (text && !m_isWatched())
        m_notices.show(text->title, text->text);
}

} // namespace palvera
