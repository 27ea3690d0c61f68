#include "desktop/Succession.h"

#include "async/Failure.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QUuid>

#include <chrono>

#include <csignal>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr auto variable = "PALVERA_SUCCESSOR";
const QString key = QStringLiteral("successor");
constexpr auto longestSilence = 20s;
constexpr auto betweenLooks = 100ms;

qint64 startDetached(const QString& program, const QByteArray& token)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(variable), QString::fromLatin1(token));
    QProcess process;
    process.setProgram(program);
    process.setProcessEnvironment(environment);
    qint64 id = 0;
    if (!process.startDetached(&id))
        throw Failure(QObject::tr("The new build could not be started: %1").arg(process.errorString()));
    return id;
}

bool isProcess(qint64 id)
{
    return ::kill(pid_t(id), 0) == 0;
}

} // namespace

std::optional<Successor> Successor::take()
{
    auto token = qgetenv(variable);
    qunsetenv(variable);
    return token.isEmpty() ? std::nullopt : std::optional(Successor{std::move(token)});
}

QByteArray Successor::message() const
{
    return QJsonDocument(QJsonObject{{key, QString::fromLatin1(token)}}).toJson(QJsonDocument::Compact);
}

Succession::Succession(Clock& clock, Starter starter, std::function<bool(qint64)> isAlive)
    : m_clock(clock),
      m_start(starter ? std::move(starter) : startDetached),
      m_isAlive(isAlive ? std::move(isAlive) : isProcess)
{}

Task<void> Succession::begin(QString program)
{
    struct Forget {
        QByteArray& token;
        ~Forget() { token.clear(); }
    } const forget{m_token};
    m_token = QUuid::createUuid().toByteArray(QUuid::Id128);
    m_isHere = false;
    const auto process = m_start(program, m_token);
    const auto deadline = m_clock.now() + longestSilence;
    // That it could be started says little: a program without one of its libraries ends right after.
    while (!m_isHere && m_isAlive(process) && m_clock.now() < deadline)
        co_await m_clock.sleep(betweenLooks);
    if (m_isHere)
        co_return;
    if (m_isAlive(process))
        ::kill(pid_t(process), SIGTERM); // or it would wait for our end
    throw Failure(QObject::tr("The new build did not start."));
}

bool Succession::take(const QByteArray& message)
{
    const auto token = QJsonDocument::fromJson(message).object().value(key);
    if (!token.isString())
        return false;
    if (token.toString().toLatin1() == m_token)
        m_isHere = true;
    return true;
}

} // namespace palvera
