#include "update/UpdatePill.h"

#include "transfers/Transfers.h"

namespace palvera {

UpdatePill::UpdatePill(Updater& updater, Transfers& transfers, QObject* parent)
    : QObject(parent), m_updater(updater), m_transfers(transfers)
{
    connect(&updater, &Updater::changed, this, &UpdatePill::update);
    update();
}

void UpdatePill::update()
{
    m_look = m_updater.release() ? pillFor(*m_updater.release(), m_updater.phase()) : PillLook{};
    Q_EMIT changed();
}

void UpdatePill::tap()
{
    if (!std::holds_alternative<Updater::Ready>(m_updater.phase()))
        return m_updater.install();
    const int moving = m_transfers.inFlightCount();
    if (moving == 0)
        return m_updater.restart();
    m_question = restartQuestion(moving);
    setConfirming(true);
}

void UpdatePill::confirmRestart()
{
    setConfirming(false);
    m_updater.restart();
}

void UpdatePill::cancel()
{
    setConfirming(false);
}

void UpdatePill::setConfirming(bool confirming)
{
    if (std::exchange(m_confirming, confirming) != confirming)
        Q_EMIT confirmingChanged();
}

} // namespace palvera
