#pragma once

#include "desktop/PasskeyService.h"

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// What a security key asks of the user, as the sign-in screen shows it. Main thread.
class PasskeyView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(PasskeyModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(bool available READ isAvailable NOTIFY availableChanged)
    Q_PROPERTY(bool asking READ isAsking NOTIFY changed)
    Q_PROPERTY(Prompt prompt READ prompt NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString note READ note NOTIFY changed)
    Q_PROPERTY(QStringList accounts READ accounts NOTIFY changed)

public:
    enum class Prompt { Nothing, Insert, Which, Pin, Touch, Account };
    Q_ENUM(Prompt)

    /// `service` outlives it.
    explicit PasskeyView(PasskeyService& service, QObject* parent = nullptr);

    /// Whether a security key is plugged in.
    bool isAvailable() const { return m_service.isPresent(); }
    /// Whether it has asked for something since `begin`; then there is a face for it until `end`.
    bool isAsking() const { return m_isAsking; }
    Prompt prompt() const;
    /// What to do.
    QString text() const;
    /// What went wrong, or is about to; empty when nothing.
    QString note() const;
    /// Those to choose from, as the key names them.
    QStringList accounts() const;

    void begin();
    void end();
    /// Whether the user would rather do it in the browser.
    bool isBrowserWanted() const { return m_isBrowserWanted; }

    Q_INVOKABLE void enterPin(const QString& pin);
    Q_INVOKABLE void choose(int account);
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void useBrowser();

Q_SIGNALS:
    void availableChanged();
    void changed();

private:
    void follow();

    PasskeyService& m_service;
    bool m_isUnderWay = false;
    bool m_isAsking = false;
    bool m_isBrowserWanted = false;
};

} // namespace palvera
