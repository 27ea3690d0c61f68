#include "app/PanelPlace.h"

#include "app/WindowPlace.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>

#include <algorithm>

namespace palvera {

namespace {

constexpr int gap = 12;
constexpr int margin = 20; // to the screen's edges

} // namespace

PanelPlace::PanelPlace(QQuickWindow& panel, QQuickWindow& window, std::function<int()> bar,
                       std::chrono::milliseconds settling)
    : m_panel(panel), m_window(window), m_bar(std::move(bar))
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(settling);
    panel.installEventFilter(this);
}

QRect PanelPlace::choose(QSize panel, const QRect& window, int bar, const QRect& screen, int leastHeight)
{
    const auto fits = [&](int x) { return x >= screen.left() && x + panel.width() <= screen.right() + 1; };
    for (const int x : {window.right() + 1 + gap, window.left() - gap - panel.width()})
        if (fits(x)) {
            const int lowest = std::max(screen.top(), screen.bottom() + 1 - panel.height());
            return {QPoint(x, std::clamp(window.top(), screen.top(), lowest)), panel};
        }
    const int x = std::max(screen.left(), screen.right() + 1 - margin - panel.width());
    const int y = std::max(screen.top() + margin, bar + gap);
    panel.setHeight(std::clamp(screen.bottom() + 1 - y, std::min(leastHeight, panel.height()), panel.height()));
    return {QPoint(x, std::max(screen.top(), std::min(y, screen.bottom() + 1 - panel.height()))), panel};
}

bool PanelPlace::eventFilter(QObject* watched, QEvent* event)
{
    const auto type = event->type();
    if (type == QEvent::Show)
        place();
    else if (type == QEvent::Move && m_panel.isVisible() && !m_settling.isActive())
        m_moved = m_panel.framePosition();
    return QObject::eventFilter(watched, event);
}

void PanelPlace::place()
{
    m_settling.start();
    QList<QRect> screens;
    for (const auto* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    if (m_moved) {
        if (const auto there = WindowPlace::reachable({*m_moved, m_panel.size()}, screens))
            return m_panel.setFramePosition(there->topLeft());
    }
    // The panel has a frame once it is shown; it is like the window's.
    const auto frame = m_window.frameMargins();
    const auto place =
        choose(m_panel.size().grownBy(frame), m_window.frameGeometry(), m_window.geometry().top() + m_bar(),
               m_window.screen()->availableGeometry(), m_panel.minimumHeight() + frame.top() + frame.bottom());
    m_panel.resize(place.size().shrunkBy(frame));
    m_panel.setFramePosition(place.topLeft());
}

} // namespace palvera
