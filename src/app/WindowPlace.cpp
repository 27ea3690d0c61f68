#include "app/WindowPlace.h"

#include "files/Preferences.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>

namespace palvera {

namespace {

const QString maximized = QStringLiteral("maximized");
constexpr int smallestSide = 100;
constexpr std::chrono::milliseconds settling{300}; // a window manager places what is shown within that
constexpr int gripHeight = 40;                     // the part that must be seen for the window to be moved
constexpr int gripWidth = 120;

} // namespace

WindowPlace::WindowPlace(QQuickWindow& window, Preferences& preferences, QString key)
    : m_window(window), m_preferences(preferences), m_key(std::move(key))
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(settling);
    connect(&m_soon, &QTimer::timeout, this, [this] {
        m_isPlaced = true;
        keep();
    });
    restore();
    window.installEventFilter(this);
    connect(qGuiApp, &QCoreApplication::aboutToQuit, this, &WindowPlace::keep);
}

std::optional<QRect> WindowPlace::parse(const QString& stored)
{
    const auto words = stored.split(u',');
    int numbers[4];
    if (words.size() < 4)
        return {};
    for (int i = 0; i < 4; ++i) {
        bool isNumber = false;
        numbers[i] = words[i].toInt(&isNumber);
        if (!isNumber)
            return {};
    }
    QRect place(numbers[0], numbers[1], numbers[2], numbers[3]);
    if (place.width() < smallestSide || place.height() < smallestSide)
        return {};
    return place;
}

std::optional<QRect> WindowPlace::reachable(QRect place, const QList<QRect>& screens)
{
    for (const auto& screen : screens) {
        auto title = place;
        title.setHeight(gripHeight);
        if (title.top() < screen.top() && title.bottom() >= screen.top())
            title.moveTop(screen.top());
        const auto seen = screen.intersected(title);
        if (seen.width() >= gripWidth && seen.height() >= gripHeight / 2) {
            place.moveTop(title.top());
            return place;
        }
    }
    return {};
}

void WindowPlace::restore()
{
    const auto stored = m_preferences.string(m_key).value_or(QString());
    const auto place = parse(stored);
    m_normal = {m_window.framePosition(), m_window.size()};
    if (!place)
        return;
    QList<QRect> screens;
    for (const auto* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    m_window.resize(place->size().expandedTo(m_window.minimumSize())); // which grows with the texts
    if (const auto found = reachable(*place, screens))
        m_window.setFramePosition(found->topLeft());
    m_normal = {m_window.framePosition(), m_window.size()};
    if (stored.endsWith(maximized))
        m_window.setWindowStates(Qt::WindowMaximized);
}

bool WindowPlace::eventFilter(QObject* watched, QEvent* event)
{
    const auto type = event->type();
    if (type == QEvent::Close)
        keep();
    else if ((type == QEvent::Expose || type == QEvent::Move || type == QEvent::Resize ||
              type == QEvent::WindowStateChange) &&
             m_window.isExposed())
        m_soon.start();
    return QObject::eventFilter(watched, event);
}

void WindowPlace::keep()
{
    m_soon.stop();
    if (!m_isPlaced)
        return;
    const bool isMaximized = m_window.windowStates().testFlag(Qt::WindowMaximized);
    if (m_window.isVisible() && !isMaximized && !m_window.windowStates().testFlag(Qt::WindowFullScreen))
        m_normal = {m_window.framePosition(), m_window.size()};
    auto text =
        QStringLiteral("%1,%2,%3,%4").arg(m_normal.x()).arg(m_normal.y()).arg(m_normal.width()).arg(m_normal.height());
    if (isMaximized)
        text += u',' + maximized;
    if (text != m_preferences.string(m_key))
        m_preferences.setString(m_key, text);
}

} // namespace palvera
