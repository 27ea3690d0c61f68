#pragma once

#include "update/UpdateRules.h"

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// What the program says of itself and of its updates: the sheet about it, and the answer to who checks by hand.
///
/// Lives on the main thread.
class AboutView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(AboutModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(bool open READ isOpen WRITE setOpen NOTIFY openChanged)
    Q_PROPERTY(QString versionText READ versionText CONSTANT)
    Q_PROPERTY(QString lastCheckText READ lastCheckText NOTIFY changed)
    Q_PROPERTY(QString failureText READ failureText NOTIFY changed)
    Q_PROPERTY(QString licences READ licences CONSTANT)
    Q_PROPERTY(QString alertTitle READ alertTitle NOTIFY changed)
    Q_PROPERTY(QString alertDetail READ alertDetail NOTIFY changed)
    Q_PROPERTY(bool checking READ isChecking NOTIFY changed)
    Q_PROPERTY(bool upToDate READ isUpToDate NOTIFY changed)

public:
    /// `updater` outlives it.
    explicit AboutView(Updater& updater, QObject* parent = nullptr);

    /// The sheet.
    bool isOpen() const { return m_open; }
    void setOpen(bool open);
    QString versionText() const { return m_updater.versionText(); }
    /// Empty where updates come by another way.
    QString lastCheckText() const;
    /// The last failure of an update; empty when there was none.
    QString failureText() const;

    /// The address of the folder with the licences of all that comes with this copy of the program; empty where it has
    /// none.
    QString licences() const;
    /// Empty when there is nothing to tell.
    QString alertTitle() const;
    QString alertDetail() const;
    /// Whether the answer is still waited for, and for so long that it must be said.
    bool isChecking() const { return isAlert(Updater::Alert::Kind::checking); }
    bool isUpToDate() const { return isAlert(Updater::Alert::Kind::upToDate); }

    /// "Check for Updates…"
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void dismissAlert() { m_updater.dismissAlert(); }

Q_SIGNALS:
    void openChanged();
    void changed();

private:
    bool isAlert(Updater::Alert::Kind kind) const;

    Updater& m_updater;
    bool m_open = false;
};

} // namespace palvera
