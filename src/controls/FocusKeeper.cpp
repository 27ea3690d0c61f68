#include "controls/FocusKeeper.h"

#include <QQuickWindow>

#include <cmath>
#include <limits>

namespace palvera {
namespace {

/// A list that loads soon shows its rows.
constexpr std::chrono::milliseconds patience(250);

bool isMenu(const QQuickItem* item)
{
    return item && item->parent() && item->parent()->inherits("QQuickMenu");
}

bool isThere(const QQuickItem* item)
{
    return item && item->window() && item->isVisible() && item->isEnabled();
}

/// A scope, such as a page or an empty list, has the keyboard only for what is in it.
bool canHold(const QQuickItem* item)
{
    return isThere(item) && (item->activeFocusOnTab() || !item->isFocusScope());
}

template <class Predicate>
QQuickItem* nearestAncestor(QQuickItem* item, Predicate fits)
{
    while (item && !fits(item))
        item = item->parentItem();
    return item;
}

bool isRepeatedChoice(const QKeyEvent& key, const QQuickItem* active)
{
    const bool isTyping = active && active->flags() & QQuickItem::ItemAcceptsInputMethod;
    return key.isAutoRepeat() &&
           (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || (key.key() == Qt::Key_Space && !isTyping));
}

QQuickItem* popupOf(QQuickItem* item)
{
    return nearestAncestor(
        item, [](auto* each) { return each->parentItem() && each->parentItem()->inherits("QQuickOverlay"); });
}

QQuickItem* stopOf(QQuickItem* item)
{
    return nearestAncestor(item, [](auto* each) { return each->activeFocusOnTab(); });
}

QQuickItem* scopeOf(QQuickItem* item)
{
    return nearestAncestor(item, [](auto* each) { return each->isFocusScope() && !each->activeFocusOnTab(); });
}

QRectF placeOf(const QQuickItem* item)
{
    return item->mapRectToScene(item->boundingRect());
}

double distance(const QRectF& a, const QRectF& b)
{
    return std::hypot(std::max({0.0, a.left() - b.right(), b.left() - a.right()}),
                      std::max({0.0, a.top() - b.bottom(), b.top() - a.bottom()}));
}

/// Of the stops of Tab in that item; null where there are none.
QQuickItem* nearestStop(QQuickItem* around, const QRectF& place)
{
    QList<QQuickItem*> stops;
    QQuickItem* nearest = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (auto* item = around->nextItemInFocusChain(); around->isAncestorOf(item) && !stops.contains(item);
         item = item->nextItemInFocusChain()) {
        stops.append(item);
        if (!canHold(item))
            continue;
        if (const auto away = distance(placeOf(item), place); away < least) {
            least = away;
            nearest = item;
        }
    }
    return nearest;
}

} // namespace

FocusKeeper::FocusKeeper(QQuickItem* parent) : QQuickItem(parent)
{
    connect(this, &QQuickItem::windowChanged, this, [this](QQuickWindow* window) {
        m_patience.stop();
        m_isLedByKey = false;
        if (!window)
            return;
        window->installEventFilter(this);
        connect(window, &QQuickWindow::afterAnimating, this, &FocusKeeper::check);
        // A press may open something before the next picture.
        connect(window, &QQuickWindow::activeFocusItemChanged, this, [this, window] {
            if (auto* active = window->activeFocusItem(); canHold(active))
                note(active);
            else if (m_isLedByKey && isMenu(active))
                QMetaObject::invokeMethod(this, &FocusKeeper::beginMenu, Qt::QueuedConnection); // once it is open
        });
    });
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &FocusKeeper::lend);
}

bool FocusKeeper::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) { // a repetition is both
        m_isLedByKey = true;
        return isRepeatedChoice(*static_cast<QKeyEvent*>(event),
                                static_cast<QQuickWindow*>(watched)->activeFocusItem());
    }
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::TouchBegin)
        m_isLedByKey = false;
    return QQuickItem::eventFilter(watched, event);
}

void FocusKeeper::beginMenu()
{
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    if (auto* active = window() ? window()->activeFocusItem() : nullptr; isMenu(active))
        QCoreApplication::sendEvent(active, &down);
}

void FocusKeeper::check()
{
    auto* active = window()->activeFocusItem();
    if (!active) // another window has the keyboard
        return;
    const auto before = held(active);
    if (canHold(active)) {
        m_patience.stop();
        if (active != m_lent)
            m_lent.clear();
        const auto wanted = std::ranges::find_if(m_wanted, [](const auto& item) { return canHold(item); });
        if (m_lent && wanted != m_wanted.end())
            give(*wanted, before);
        else
            note(active);
    } else if (canHold(before.item)) {
        give(before.item, before);
    } else if (canHold(before.stop)) {
        give(before.stop, before);
    } else if (!m_patience.isActive() && !isNew(popupOf(active))) {
        m_patience.start();
    }
}

void FocusKeeper::lend()
{
    auto* active = window()->activeFocusItem();
    if (!active || canHold(active))
        return;
    const auto before = held(active);
    m_wanted = {before.item, before.stop, active};
    const bool isSamePage = isThere(before.scope);
    QQuickItem* around = nearestAncestor(isSamePage && before.item ? before.item.get() : active, isThere);
    const auto near = isSamePage ? before.place : QRectF(placeOf(around).center(), QSizeF(0, 0));
    QQuickItem* place = nullptr;
    for (; around && !place; around = around->parentItem())
        place = nearestStop(around, near);
    if (!place)
        return;
    give(place, before);
    m_lent = window()->activeFocusItem();
}

void FocusKeeper::note(QQuickItem* item)
{
    auto* popup = popupOf(item);
    m_held.removeIf([&](const Held& each) { return each.popup == popup && each.isInPopup == (popup != nullptr); });
    m_held.append({.isInPopup = popup != nullptr,
                   .popup = popup,
                   .item = item,
                   .stop = stopOf(item),
                   .scope = scopeOf(item->parentItem()),
                   .place = placeOf(item),
                   .isByMouse = item->property("focusReason").toInt() == Qt::MouseFocusReason});
}

/// What had the keyboard where it is: nothing, in a popup that has just opened.
FocusKeeper::Held FocusKeeper::held(QQuickItem* active)
{
    m_held.removeIf([](const Held& each) { return each.isInPopup && !isThere(each.popup); });
    if (m_held.isEmpty() || isNew(popupOf(active)))
        return {};
    return m_held.back();
}

/// A popup that has just opened has a place of its own to begin, or none: a menu.
bool FocusKeeper::isNew(QQuickItem* popup) const
{
    return popup && (m_held.isEmpty() || m_held.back().popup != popup);
}

/// Shows a ring around it, unless it was led there with the mouse.
void FocusKeeper::give(QQuickItem* item, const Held& before)
{
    m_lent.clear();
    item->forceActiveFocus(before.isByMouse ? Qt::MouseFocusReason : Qt::TabFocusReason);
}

} // namespace palvera
