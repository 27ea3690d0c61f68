#pragma once

#include <QObject>
#include <QRect>

class QQuickWindow;

namespace palvera {

class Preferences;

/// Keeps where a window is and how big, from one start to the next. Main thread.
class WindowPlace : public QObject {
    Q_OBJECT

public:
    /// Puts `window` where it was the last time, if some screen still has room for it there, and follows it. Its place
    /// is kept under `key`: "x,y,width,height" and ",maximized" where it is. Window and preferences must outlive this.
    WindowPlace(QQuickWindow& window, Preferences& preferences, QString key);

    /// What `stored` says, or nothing where it makes no sense.
    static std::optional<QRect> parse(const QString& stored);
    /// Whether a window at `place` could be seen and moved: enough of its upper edge is on one of `screens`.
    static bool isReachable(const QRect& place, const QList<QRect>& screens);

private:
    void restore();
    void keep();

    QQuickWindow& m_window;
    Preferences& m_preferences;
    const QString m_key;
    QRect m_normal; // while it is not maximized
};

} // namespace palvera
