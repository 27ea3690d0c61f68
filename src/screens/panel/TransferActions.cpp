#include "screens/panel/TransferActions.h"

namespace palvera {

using Action = TransferAction::Value;

QList<Action> actionsFor(const Item& item)
{
    const bool isDone = std::holds_alternative<Item::Done>(item.state);
    const auto* waiting = std::get_if<Item::Waiting>(&item.state);
    QList<Action> actions;
    if (std::holds_alternative<Item::Retrying>(item.state) || (waiting && waiting->why.isEmpty()))
        actions.append(Action::StartNow);
    if (item.isInFlight())
        actions.append({item.isPaused() ? Action::Resume : Action::Pause, Action::Stop});
    else if (!isDone)
        actions.append(Action::TryAgain);
    if (!item.file.isEmpty())
        actions.append(Action::ShowInFolder);
    if (!item.file.isEmpty() && (isDone || item.kind == Item::Kind::upload)) // half a film is none to open
        actions.append(Action::Open);
    if (item.target.asDeliverable())
        actions.append(Action::ShowDeliverable);
    if (!messageOf(item.state).isEmpty())
        actions.append(Action::CopyError);
    actions.append(Action::CopyName);
    if (!item.isInFlight())
        actions.append(Action::Remove);
    return actions;
}

Action mainActionFor(const Item& item)
{
    const auto actions = actionsFor(item);
    QList<Action> preferred{Action::Resume, Action::TryAgain, Action::ShowDeliverable, Action::ShowInFolder};
    if (item.kind == Item::Kind::download && std::holds_alternative<Item::Done>(item.state))
        preferred = {Action::ShowInFolder};
    for (const auto action : preferred)
        if (actions.contains(action))
            return action;
    return Action::None;
}

QString textOf(Action action)
{
    switch (action) {
    case Action::None:
        break;
    case Action::StartNow:
        return QObject::tr("Start now");
    case Action::Pause:
        return QObject::tr("Pause");
    case Action::Resume:
        return QObject::tr("Resume");
    case Action::TryAgain:
        return QObject::tr("Try again");
    case Action::Stop:
        return QObject::tr("Stop…");
    case Action::ShowInFolder:
        return QObject::tr("Show in folder");
    case Action::Open:
        return QObject::tr("Open");
    case Action::ShowDeliverable:
        return QObject::tr("Show deliverable");
    case Action::CopyError:
        return QObject::tr("Copy error");
    case Action::CopyName:
        return QObject::tr("Copy name");
    case Action::Remove:
        return QObject::tr("Remove from list");
    }
    return {};
}

} // namespace palvera
