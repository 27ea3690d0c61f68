#include "screens/panel/TransferActions.h"

#include <QCoreApplication>

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
    const auto text = [](const char* source) { return QCoreApplication::translate("TransferAction", source); };
    switch (action) {
    case Action::None:
        break;
    case Action::StartNow:
        return text("Start now");
    case Action::Pause:
        return text("Pause");
    case Action::Resume:
        return text("Resume");
    case Action::TryAgain:
        return text("Try again");
    case Action::Stop:
        return text("Stop…");
    case Action::ShowInFolder:
        return text("Show in folder");
    case Action::Open:
        return text("Open");
    case Action::ShowDeliverable:
        return text("Show deliverable");
    case Action::CopyError:
        return text("Copy error");
    case Action::CopyName:
        return text("Copy name");
    case Action::Remove:
        return text("Remove from list");
    }
    return {};
}

} // namespace palvera
