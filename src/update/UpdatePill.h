#pragma once

#include "update/UpdateRules.h"

#include <QtQml/qqmlregistration.h>

namespace palvera {

class Transfers;

/// The pill in which the user sees and drives an update, and the question before a restart that cuts transfers off.
///
/// Lives on the main thread.
class UpdatePill : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(UpdatePillModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(bool shown READ isShown NOTIFY changed)
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(int percent READ percent NOTIFY changed)
    Q_PROPERTY(QString tooltip READ tooltip NOTIFY changed)
    Q_PROPERTY(bool busy READ isBusy NOTIFY changed)
    Q_PROPERTY(bool failed READ hasFailed NOTIFY changed)
    Q_PROPERTY(bool tappable READ isTappable NOTIFY changed)
    Q_PROPERTY(bool confirming READ isConfirming NOTIFY confirmingChanged)
    Q_PROPERTY(QString question READ question NOTIFY confirmingChanged)

public:
    /// Both outlive it.
    UpdatePill(Updater& updater, Transfers& transfers, QObject* parent = nullptr);

    /// Whether there is a newer build to speak of.
    bool isShown() const { return m_updater.release().has_value(); }
    const QString& symbol() const { return m_look.symbol; }
    const QString& text() const { return m_look.text; }
    /// How much is downloaded; below 0 when nothing is being.
    int percent() const { return m_look.percent.value_or(-1); }
    const QString& tooltip() const { return m_look.tooltip; }
    bool isBusy() const { return m_look.isBusy; }
    bool hasFailed() const { return std::holds_alternative<Updater::Failed>(m_updater.phase()); }
    /// Whether a tap does something.
    bool isTappable() const { return !m_look.isBusy && !m_look.percent; }
    bool isConfirming() const { return m_confirming; }
    /// As of when it was asked.
    const QString& question() const { return m_question; }

    Q_INVOKABLE void tap();
    /// "Restart", whatever moves. Does nothing when there is nothing ready by now.
    Q_INVOKABLE void confirmRestart();
    /// "Not yet".
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void changed();
    void confirmingChanged();

private:
    void update();
    void setConfirming(bool confirming);

    Updater& m_updater;
    Transfers& m_transfers;
    PillLook m_look;
    bool m_confirming = false;
    QString m_question;
};

} // namespace palvera
