#include "app/signin/PasskeyView.h"

#include "session/PasskeyTexts.h"

namespace palvera {

using Kind = PasskeyPrompt::Kind;

PasskeyView::PasskeyView(PasskeyService& service, QObject* parent) : QObject(parent), m_service(service)
{
    QObject::connect(&service, &PasskeyService::presentChanged, this, &PasskeyView::availableChanged);
    QObject::connect(&service, &PasskeyService::promptChanged, this, &PasskeyView::follow);
}

PasskeyView::Prompt PasskeyView::prompt() const
{
    switch (m_service.prompt().kind) {
    case Kind::none:
        return Prompt::Nothing;
    case Kind::insert:
        return Prompt::Insert;
    case Kind::which:
        return Prompt::Which;
    case Kind::pin:
        return Prompt::Pin;
    case Kind::touch:
        return Prompt::Touch;
    case Kind::account:
        return Prompt::Account;
    }
    return Prompt::Nothing;
}

QString PasskeyView::text() const
{
    return textFor(m_service.prompt());
}

QString PasskeyView::note() const
{
    return noteFor(m_service.prompt());
}

QStringList PasskeyView::accounts() const
{
    return accountsOf(m_service.prompt());
}

void PasskeyView::begin()
{
    m_isUnderWay = true;
    m_isBrowserWanted = false;
}

void PasskeyView::end()
{
    m_isUnderWay = false;
    m_isAsking = false;
    Q_EMIT changed();
}

void PasskeyView::follow()
{
    m_isAsking = m_isUnderWay && (m_isAsking || prompt() != Prompt::Nothing);
    Q_EMIT changed();
}

void PasskeyView::enterPin(const QString& pin)
{
    m_service.enterPin(Pin(pin.toUtf8()));
}

void PasskeyView::choose(int account)
{
    m_service.choose(account);
}

void PasskeyView::cancel()
{
    m_service.cancel();
}

void PasskeyView::useBrowser()
{
    m_isBrowserWanted = true;
    m_service.cancel();
}

} // namespace palvera
