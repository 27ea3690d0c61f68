#include "controls/SpokenStates.h"

#include <QAccessibleObject>
#include <QQuickItem>
#include <QQuickWindow>

namespace palvera {
namespace {

/// What QML has attached to the item as its Accessible; Qt has no other way to it.
QObject* accessibleOf(const QObject* item)
{
    for (auto* child : item->children())
        if (child->inherits("QQuickAccessibleAttached"))
            return child;
    return nullptr;
}

void collectChildren(const QQuickItem* item, QList<QAccessibleInterface*>& into)
{
    for (auto* child : item->childItems())
        if (auto* interface = QAccessible::queryAccessibleInterface(child))
            into.append(interface);
        else
            collectChildren(child, into);
}

/// In the place of Qt's own, to which nothing can be added.
class StatedItem : public QAccessibleObject, public QAccessibleActionInterface {
public:
    explicit StatedItem(QQuickItem* item) : QAccessibleObject(item) {}

    QWindow* window() const override { return item()->window(); }
    QRect rect() const override
    {
        const auto place = item()->mapRectToScene(item()->boundingRect()).toRect();
        return {window() ? window()->mapToGlobal(place.topLeft()) : place.topLeft(), place.size()};
    }
    QAccessibleInterface* parent() const override
    {
        for (auto* each = item()->parentItem(); each; each = each->parentItem())
            if (auto* interface = QAccessible::queryAccessibleInterface(each))
                return interface;
        return QAccessible::queryAccessibleInterface(window());
    }
    QAccessibleInterface* child(int index) const override { return children().value(index); }
    int childCount() const override { return int(children().size()); }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return int(children().indexOf(const_cast<QAccessibleInterface*>(child)));
    }
    QAccessible::Role role() const override { return QAccessible::Role(told("role").toInt()); }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name          ? told("name").toString()
               : kind == QAccessible::Description ? told("description").toString()
                                                  : QString();
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.disabled = !item()->isEnabled();
        state.invisible = !item()->isVisible();
        state.focusable = item()->activeFocusOnTab();
        state.focused = item()->hasActiveFocus();
        state.modal = item()->property("modal").toBool();
        const auto expanded = item()->property("expanded");
        state.expandable = expanded.isValid();
        state.expanded = expanded.toBool();
        state.collapsed = state.expandable && !state.expanded;
        state.hasPopup = role() == QAccessible::ComboBox;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    QStringList actionNames() const override
    {
        return state().focusable ? QStringList{pressAction(), setFocusAction()} : QStringList();
    }
    void doAction(const QString& name) override
    {
        if (name == setFocusAction())
            item()->forceActiveFocus();
        else
            QMetaObject::invokeMethod(accessibleOf(item()), "pressAction");
    }
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

private:
    QQuickItem* item() const { return static_cast<QQuickItem*>(object()); }
    QVariant told(const char* what) const
    {
        const auto* accessible = accessibleOf(item());
        return accessible ? accessible->property(what) : QVariant();
    }
    QList<QAccessibleInterface*> children() const
    {
        QList<QAccessibleInterface*> children;
        collectChildren(item(), children);
        return children;
    }
};

/// Asked for each class of the object in turn, from its own up: Qt answers for the last, QQuickItem.
QAccessibleInterface* statedItem(const QString& /*className*/, QObject* object)
{
    auto* item = qobject_cast<QQuickItem*>(object);
    const bool hasStates = item && (item->property("expanded").isValid() || item->property("modal").isValid());
    return hasStates && accessibleOf(item) ? new StatedItem(item) : nullptr;
}

} // namespace

void installSpokenStates()
{
    QAccessible::installFactory(statedItem);
}

} // namespace palvera
