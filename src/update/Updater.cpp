#include "update/Updater.h"

#include "async/RunOn.h"
#include "desktop/Workspace.h"
#include "http/HttpAddress.h"
#include "http/Redirects.h"
#include "text/VisibleText.h"
#include "update/ImageFile.h"
#include "update/UpdateRules.h"

#include <boost/asio/post.hpp>

#include <QCoreApplication>
#include <QFile>
#include <QPointer>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr auto betweenChecks = 120s, afterFailedCheck = 30s;
constexpr auto betweenGlances = 20s; // of whoever comes and goes
constexpr auto feedTimeout = 15s;
constexpr auto imageIdleTimeout = 60s;
constexpr qint64 longestFeed = 1 << 20;
constexpr auto unnoticed = 400ms; // a wait that need not be explained

} // namespace

Updater::Updater(Environment environment, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)), m_scope(m_environment.main)
{
    start();
}

Updater::~Updater() = default;

QString Updater::versionText() const
{
    return palvera::versionText(m_environment.version, m_environment.build);
}

void Updater::start()
{
    if (!isInUse() || std::exchange(m_started, true))
        return;
    const auto look = [this] { m_scope.start(checkOnce()); };
    connect(&m_environment.workspace, &Workspace::becameActive, this, look);
    connect(&m_environment.workspace, &Workspace::windowBecameKey, this, look);
    connect(&m_environment.workspace, &Workspace::woke, this, look);
    m_scope.start(checkEverAgain());
}

Task<void> Updater::checkEverAgain()
{
    for (;;) {
        const bool isRead = co_await check(true);
        co_await m_environment.clock.sleep(isRead ? betweenChecks : afterFailedCheck);
    }
}

bool Updater::isIdle() const
{
    return std::holds_alternative<Idle>(m_phase) || std::holds_alternative<Available>(m_phase);
}

Task<bool> Updater::check(bool force)
{
    if (std::holds_alternative<Failed>(m_phase))
        setPhase(Idle{});
    if (!isIdle())
        co_return true;
    const bool isRecent = m_lastRead && m_environment.clock.now() - *m_lastRead < betweenGlances;
    if (!force && (isRecent || m_reads > 0))
        co_return true;
    auto release = co_await readFeed();
    m_isFeedSilent = !release;
    if (release) {
        m_lastRead = m_environment.clock.now();
        m_lastChecked = m_environment.clock.wallNow();
    }
    Q_EMIT changed();
    if (!release)
        co_return false;
    // The user may have gone on while the feed was read: what is under way, with the release that it is of, stays.
    if (!isIdle() || !isNewer(release->build, m_environment.build) ||
        isSameBuild(release->build, m_environment.refusedBuild))
        co_return true;
    if (std::exchange(m_release, release) != release)
        Q_EMIT changed();
    setPhase(Available{});
    co_return true;
}

Task<std::optional<Updater::Release>> Updater::readFeed()
{
    struct Counted {
        int& count;
        explicit Counted(int& reads) : count(reads) { ++count; }
        ~Counted() { --count; }
    } const counted(m_reads);
    const auto& feed = m_environment.feed;
    try {
        const auto answer = co_await sendFollowing(m_environment.http, m_environment.clock,
                                                   {.url = feed,
                                                    .headers = {{"Cache-Control", "no-cache"}},
                                                    .idleTimeout = feedTimeout,
                                                    .totalTimeout = feedTimeout,
                                                    .answerLimit = longestFeed},
                                                   [&](const QByteArray& url) { return isAllowedAddress(url, feed); });
        co_return decodeRelease(answer.body);
    } catch (const Failure&) {
        co_return std::nullopt;
    }
}

void Updater::checkNow()
{
    if (!isInUse())
        return setAlert(Alert{.kind = Alert::Kind::notHere,
                              .title = tr("Updates of this copy come with those of the system."),
                              .detail = tr("You have %1.").arg(versionText())});
    if (!std::exchange(m_isAsking, true))
        m_scope.start(checkByHand());
}

Task<void> Updater::checkByHand()
{
    const int question = ++m_questions;
    setAlert({});
    m_scope.start(sayThatItTakesTime(question));
    const bool isRead = co_await check(true);
    if (question != m_questions) // the user does not want to know any more
        co_return;
    m_isAsking = false;
    if (m_release && !std::holds_alternative<Idle>(m_phase)) // the pill tells
        setAlert({});
    else
        setAlert(alertAfter(isRead, versionText()));
}

Task<void> Updater::sayThatItTakesTime(int question)
{
    co_await m_environment.clock.sleep(unnoticed);
    if (m_isAsking && question == m_questions)
        setAlert(Alert{.kind = Alert::Kind::checking, .title = tr("Checking for updates…"), .detail = {}});
}

void Updater::dismissAlert()
{
    if (std::exchange(m_isAsking, false))
        ++m_questions;
    setAlert({});
}

void Updater::install()
{
    const bool canBegin = isIdle() || std::holds_alternative<Failed>(m_phase);
    if (!m_release || !canBegin || !parseHttpAddress(m_release->url.toUtf8()))
        return;
    setPhase(Downloading{});
    m_scope.start(downloadAndPrepare(*m_release));
}

Task<void> Updater::downloadAndPrepare(Release release)
{
    QString image;
    std::exception_ptr failure;
    try {
        image = co_await download(release);
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure) {
        if (isCancellation(failure))
            std::rethrow_exception(failure);
        co_await callOn(m_environment.disk, [this] { removeImageFolder(imageFolder()); });
        co_return fail(describe(failure));
    }
    setPhase(Preparing{});
    const auto error = co_await ask([&](PVInstallerProtocol& installer, PVInstallerProtocol::Reply reply) {
        installer.prepareWithImage(image, m_environment.target, {release.version, plainNumber(release.build)},
                                   std::move(reply));
    });
    co_await callOn(m_environment.disk, [this] { removeImageFolder(imageFolder()); });
    error.isEmpty() ? setPhase(Ready{}) : fail(error);
}

QString Updater::imageFolder() const
{
    return m_environment.caches + QStringLiteral("/Update");
}

/// The path of the image.
Task<QString> Updater::download(Release release)
{
    const QString path = imageFolder() + u'/' + imageName(release.version);
    qint64 room = 0;
    co_await callOn(m_environment.disk, [&] { room = makeImageFolder(imageFolder()); });
    ImageFile file(path, room, [main = m_environment.main, self = QPointer(this)](double fraction) {
        boost::asio::post(main, [self, fraction] {
            if (self)
                self->advance(fraction);
        });
    });
    const auto& feed = m_environment.feed;
    const auto answer =
        co_await sendFollowing(m_environment.http, m_environment.clock,
                               {.url = release.url.toUtf8(),
                                .idleTimeout = imageIdleTimeout,
                                .sink = &file,
                                .wantsBody = [&file](const HttpResponse& head) { return file.expect(head); }},
                               [&](const QByteArray& url) { return isAllowedAddress(url, feed); });
    if (!answer.isSuccess() || answer.length == 0)
        throw UpdateError(tr("The download failed."));
    co_return path;
}

void Updater::advance(double fraction)
{
    if (std::holds_alternative<Downloading>(m_phase))
        setPhase(Downloading{fraction});
}

void Updater::restart()
{
    if (!std::holds_alternative<Ready>(m_phase))
        return;
    setPhase(Restarting{});
    m_scope.start(installAndRelaunch());
}

Task<void> Updater::installAndRelaunch()
{
    auto error = co_await ask([&](PVInstallerProtocol& installer, PVInstallerProtocol::Reply reply) {
        installer.installWithTarget(m_environment.target, std::move(reply));
    });
    if (error.isEmpty()) {
        try {
            co_await m_environment.workspace.openApplication();
        } catch (const Failure& failure) {
            error = failure.text();
        }
    }
    error.isEmpty() ? m_environment.workspace.terminate() : fail(error);
}

/// What the installer answers: no text for success.
Task<QString> Updater::ask(std::function<void(PVInstallerProtocol&, PVInstallerProtocol::Reply)> body)
{
    const auto missing = tr("The installer is missing from this copy of the app.");
    if (m_environment.target.isEmpty())
        co_return missing;
    if (!m_connection) {
        m_connection = m_environment.connect();
        m_connection->invalidated = [this, broken = m_connection.get()] {
            boost::asio::post(m_environment.main, [self = QPointer(this), broken] {
                if (self && self->m_connection.get() == broken)
                    self->m_connection.reset();
            });
        };
    }
    struct Waiting {
        explicit Waiting(const Executor& main) : event(main) {}
        Once once;
        QString text;
        Event event;
    };
    // Shared: an answer may come when nobody waits for it any more.
    const auto waiting = std::make_shared<Waiting>(m_environment.main);
    const auto answer = [waiting, main = m_environment.main](const QString& text) {
        if (!waiting->once.claim())
            return;
        boost::asio::post(main, [waiting, text] {
            waiting->text = text;
            waiting->event.set();
        });
    };
    const auto proxy = m_connection->remoteObject([answer, missing](const InstallerTrouble& trouble) {
        answer(trouble.isMissing ? missing : tr("The installer did not answer: %1").arg(trouble.description));
    });
    body(*proxy, answer);
    co_await waiting->event.wait();
    co_return QCoreApplication::translate("Installer", waiting->text.toUtf8()); // in English, of whichever build
}

void Updater::setPhase(Phase phase)
{
    if (m_phase == phase)
        return;
    m_phase = std::move(phase);
    Q_EMIT changed();
}

void Updater::setAlert(std::optional<Alert> alert)
{
    if (m_alert == alert)
        return;
    m_alert = std::move(alert);
    Q_EMIT changed();
}

void Updater::fail(const QString& message)
{
    m_lastFailure = Note{.when = m_environment.clock.wallNow(), .text = visibleText(message, Lines::several)};
    setPhase(Failed{m_lastFailure->text});
}

} // namespace palvera
