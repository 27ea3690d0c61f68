#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <array>

namespace palvera {

/// Keeps the keyboard of the window that it is placed in where somebody looks who sees that window.
///
/// An item that has the keyboard may be hidden, disabled or removed, and a popup that closes takes its own along: Qt
/// leaves it with nothing then, or with what nobody sees. Once for every picture of the window, such a loss goes back
/// to what had it before, in the popup or page that is left; if that cannot take it, after a moment to the nearest stop
/// of Tab, from which it returns when the other can take it after all and nobody has moved it meanwhile. A menu that
/// was opened with a key begins at its first entry. A key that is held down chooses once: what it leads to may have a
/// choice of its own. Main thread.
class FocusKeeper : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit FocusKeeper(QQuickItem* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What had the keyboard in a popup, or in the page.
    struct Held {
        bool isInPopup = false;
        QPointer<QQuickItem> popup;
        QPointer<QQuickItem> item;
        QPointer<QQuickItem> stop;  ///< of Tab: the item, or the list in which it is a row
        QPointer<QQuickItem> scope; ///< that it belongs to
        QRectF place;               ///< in the window
        bool isByMouse = false;
    };

    void beginMenu();
    void check();
    void lend();
    void note(QQuickItem* item);
    Held held(QQuickItem* active);
    bool isNew(QQuickItem* popup) const;
    void give(QQuickItem* item, const Held& before);

    QList<Held> m_held;        ///< of the page, and of each popup above it
    bool m_isLedByKey = false; ///< what was pressed last in the window
    QTimer m_patience;
    QPointer<QQuickItem> m_lent;
    std::array<QPointer<QQuickItem>, 3> m_wanted; ///< in the place of what it is lent to
};

} // namespace palvera
