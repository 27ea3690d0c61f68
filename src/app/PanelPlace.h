#pragma once

#include <QObject>
#include <QRect>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

class QQuickWindow;

namespace palvera {

/// Puts the panel of transfers, each time that it opens, where it covers none of the main window's buttons; or where
/// the user has put it in this run. Main thread.
class PanelPlace : public QObject {
    Q_OBJECT

public:
    /// `bar` says the height of the main window's toolbar. What moves the panel within `settling` of its opening is the
    /// window manager, and later the user. Both windows outlive it.
    PanelPlace(QQuickWindow& panel, QQuickWindow& window, std::function<int()> bar,
               std::chrono::milliseconds settling = std::chrono::milliseconds(500));

    /// Where a panel of that size opens: beside `window` where there is room on `screen`, else in its upper corner at
    /// the end, below `bar`, the lower edge of the window's toolbar. It is made less high where it must, down to
    /// `leastHeight`. All with frames, in pixels that do not depend on the device.
    static QRect choose(QSize panel, const QRect& window, int bar, const QRect& screen, int leastHeight);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();

    QQuickWindow& m_panel;
    QQuickWindow& m_window;
    const std::function<int()> m_bar;
    QTimer m_settling;
    std::optional<QPoint> m_moved; // where the user has put its frame
};

} // namespace palvera
