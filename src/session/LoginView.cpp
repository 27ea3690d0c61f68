#include "session/LoginView.h"

#include "platform/TaskGroup.h"
#include "service/API.h"
#include "service/SignInOperations.h"
#include "session/Session.h"
#include "session/SignInDoors.h"

#include <QMetaEnum>

namespace palvera {

using namespace std::chrono_literals;

namespace {

bool isAddressOverridden(const API& api, Site site)
{
    return parseAddress(baseURL(site)) != api.serviceBase();
}

LoginView::Field fieldOf(LoginView::Face face)
{
    using Face = LoginView::Face;
    using Field = LoginView::Field;
    switch (face) {
    case Face::login:
    case Face::email:
    case Face::forgot:
        return Field::email;
    case Face::password:
        return Field::password;
    case Face::verify:
    case Face::enrol:
    case Face::totp:
        return Field::code;
    }
    return Field::email;
}

} // namespace

LoginView::LoginView(const Environment& environment, QObject* parent)
    : QObject(parent), m_environment(environment), m_tasks(environment.main)
{
    QObject::connect(&m_environment.session, &Session::siteChanged, this, &LoginView::configChanged);
}

void LoginView::open(bool developerDoor)
{
    m_tasks.stop();
    m_developerDoor = developerDoor;
    setEmail({});
    setPassword({});
    assign(m_enrol, {}, &LoginView::enrolChanged);
    assign(m_busy, false, &LoginView::busyChanged);
    go(Face::login);
    m_faceMoves = false;
    m_tasks.start(focusSoon(++m_faceChanges));
    askForConfig();
}

QString LoginView::faceName() const
{
    return QString::fromLatin1(QMetaEnum::fromType<Face>().valueToKey(int(m_face)));
}

void LoginView::setEmail(const QString& email)
{
    assign(m_email, email, &LoginView::emailChanged);
}

void LoginView::setPassword(const QString& password)
{
    assign(m_password, password, &LoginView::passwordChanged);
}

void LoginView::setCode(const QString& code)
{
    assign(m_code, code, &LoginView::codeChanged);
}

bool LoginView::isAccessCodeLinkShown() const
{
    return m_config && m_config->devAuth && m_config->workos && m_developerDoor;
}

QStringList LoginView::social() const
{
    return m_config && m_config->workos ? m_config->social.value_or(QList<QString>()) : QStringList();
}

SignInLabel LoginView::label() const
{
    if (isSiteChoiceShown())
        return signInLabel(m_environment.session.site());
    return signInLabel(m_config ? m_config->environment : std::nullopt);
}

QString LoginView::title() const
{
    return label().title;
}

QString LoginView::siteLabel() const
{
    return label().label.value_or(QString());
}

bool LoginView::isStaging() const
{
    return label().staging;
}

bool LoginView::isSiteChoiceShown() const
{
    return !isAddressOverridden(m_environment.api, m_environment.session.site());
}

bool LoginView::isLiveSite() const
{
    return m_environment.session.site() == Site::live;
}

bool LoginView::isPasskeyAvailable() const
{
    return m_environment.passkey.isAvailable();
}

QString LoginView::displayName(const QString& provider)
{
    return provider.left(1).toUpper() + provider.mid(1);
}

/// The other site may offer other ways in.
void LoginView::chooseSite(bool live)
{
    const auto site = live ? Site::live : Site::qa;
    if (m_busy || site == m_environment.session.site())
        return;
    m_tasks.start(m_environment.session.setSite(site));
    askForConfig();
}

void LoginView::go(Face face)
{
    m_failure = nullptr;
    assign(m_error, {}, &LoginView::errorChanged);
    assign(m_resent, false, &LoginView::resentChanged);
    assign(m_asked, false, &LoginView::askedChanged);
    setCode({});
    setFace(face, true);
}

void LoginView::setFace(Face face, bool moves)
{
    if (face == m_face)
        return;
    m_face = face;
    m_faceMoves = moves;
    Q_EMIT faceChanged();
    m_tasks.start(focusSoon(++m_faceChanges));
}

void LoginView::restart()
{
    setPassword({});
    assign(m_enrol, {}, &LoginView::enrolChanged);
    go(m_config && m_config->workos ? Face::email : Face::login);
}

/// Once the face has come to rest where the keyboard can be put.
Task<void> LoginView::focusSoon(int change)
{
    co_await m_environment.clock.sleep(80ms);
    if (change == m_faceChanges)
        Q_EMIT focusWanted(fieldOf(m_face));
}

void LoginView::askForConfig()
{
    m_config.reset();
    m_configLoading = true;
    m_configLate = false;
    Q_EMIT configChanged();
    ++m_configsAsked;
    m_tasks.start(loadConfig(m_configsAsked));
    m_tasks.start(noteLateConfig(m_configsAsked));
}

Task<void> LoginView::loadConfig(int asked)
{
    auto outcome = co_await outcomeOf(authConfig(m_environment.api));
    if (asked != m_configsAsked)
        co_return;
    m_configLoading = false;
    m_config = std::move(outcome.value);
    Q_EMIT configChanged();
    if (!m_config)
        co_return;
    if (m_config->workos && m_face == Face::login)
        setFace(Face::email, false);
    else if (!m_config->workos && m_face == Face::email) // that of the site before
        setFace(Face::login, false);
}

Task<void> LoginView::noteLateConfig(int asked)
{
    co_await m_environment.clock.sleep(1500ms);
    if (asked == m_configsAsked && !m_config)
        assign(m_configLate, true, &LoginView::configChanged);
}

template <class T>
void LoginView::assign(T& property, T value, void (LoginView::*changed)())
{
    if (property == value)
        return;
    property = std::move(value);
    Q_EMIT(this->*changed)();
}

template void LoginView::assign(bool&, bool, void (LoginView::*)());
template void LoginView::assign(QString&, QString, void (LoginView::*)());
template void LoginView::assign(SignInStep::EnrolTotp&, SignInStep::EnrolTotp, void (LoginView::*)());

} // namespace palvera
