#pragma once

#include <QObject>
#include <QRect>
#include <QTimer>

class QQuickWindow;

namespace palvera {

class Preferences;

/// Keeps where a window is and how big, from one start to the next, also past a crash. Main thread.
class WindowPlace : public QObject {
    Q_OBJECT

public:
    /// Puts `window` where it was the last time, if some screen still has room for it there, and follows it. Its place
    /// is kept under `key`: "x,y,width,height" and ",maximized" where it is, with the corner of its frame and the size
    /// of what is inside. Nothing is kept before the window manager has had time to place it, and each later change
    /// a moment after it. Window and preferences must outlive this.
    WindowPlace(QQuickWindow& window, Preferences& preferences, QString key);

    /// What `stored` says, or nothing where it makes no sense.
    static std::optional<QRect> parse(const QString& stored);
    /// `place` where enough of its upper edge is on one of `screens` to be seen and taken hold of, moved down or aside
    /// where the title bar would be past the top; else nothing.
    static std::optional<QRect> reachable(QRect place, const QList<QRect>& screens);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void restore();
    void keep();

    QQuickWindow& m_window;
    Preferences& m_preferences;
    const QString m_key;
    QTimer m_soon;  // until it has come to rest
    QRect m_normal; // while it is not maximized
    bool m_isPlaced = false;
};

} // namespace palvera
