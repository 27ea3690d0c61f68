#include "app/WindowPlace.h"

#include "files/Preferences.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>

namespace palvera {

namespace {

const QString maximized = QStringLiteral("maximized");
constexpr int smallestSide = 100;
constexpr int gripHeight = 40; // the part that must be seen for the window to be moved
constexpr int gripWidth = 120;

} // namespace

WindowPlace::WindowPlace(QQuickWindow& window, Preferences& preferences, QString key)
    : m_window(window), m_preferences(preferences), m_key(std::move(key)), m_normal(window.geometry())
{
    restore();
    connect(&window, &QWindow::visibilityChanged, this, &WindowPlace::keep);
    connect(qGuiApp, &QGuiApplication::lastWindowClosed, this, &WindowPlace::keep);
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

bool WindowPlace::isReachable(const QRect& place, const QList<QRect>& screens)
{
    const QRect top(place.topLeft(), QSize(place.width(), gripHeight));
    return std::ranges::any_of(screens, [&](const QRect& screen) {
        const auto seen = screen.intersected(top);
        return seen.width() >= gripWidth && seen.height() >= gripHeight / 2;
    });
}

void WindowPlace::restore()
{
    const auto stored = m_preferences.string(m_key).value_or(QString());
    const auto place = parse(stored);
    if (!place)
        return;
    QList<QRect> screens;
    for (const auto* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    if (isReachable(*place, screens))
        m_window.setGeometry(*place);
    else
        m_window.resize(place->size());
    m_normal = m_window.geometry();
    if (stored.endsWith(maximized))
        m_window.setWindowStates(Qt::WindowMaximized);
}

void WindowPlace::keep()
{
    const bool isMaximized = m_window.windowStates().testFlag(Qt::WindowMaximized);
    if (!isMaximized && !m_window.windowStates().testFlag(Qt::WindowFullScreen))
        m_normal = m_window.geometry();
    auto text =
        QStringLiteral("%1,%2,%3,%4").arg(m_normal.x()).arg(m_normal.y()).arg(m_normal.width()).arg(m_normal.height());
    if (isMaximized)
        text += u',' + maximized;
    if (text != m_preferences.string(m_key))
        m_preferences.setString(m_key, text);
}

} // namespace palvera
