#include "desktop/SecurityKeys.h"

#include "async/Event.h"
#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "desktop/KeyTalk.h"

#include <boost/asio/post.hpp>
#include <boost/asio/this_coro.hpp>

#include <QScopeGuard>
#include <QTimer>

namespace palvera {

namespace asio = boost::asio;

namespace {

/// After the node of a key is there the system still gives the right to use it.
constexpr std::chrono::milliseconds untilUsable{1000};

/// Ends by its cancellation alone, and then has the talk end.
Task<void> cutOff(std::shared_ptr<KeyTalk> talk)
{
    const auto over = qScopeGuard([talk] { talk->cancel(); });
    Event never(co_await asio::this_coro::executor);
    co_await never.wait();
}

} // namespace

SecurityKeys::SecurityKeys(Executor main, std::function<KeyList()> lister, QObject* parent)
    : PasskeyService(parent), m_main(std::move(main)), m_lister(lister ? std::move(lister) : keysOfMachine)
{
    connect(&m_devices, &QFileSystemWatcher::directoryChanged, this, [this] {
        look();
        QTimer::singleShot(untilUsable, this, &SecurityKeys::look);
    });
}

SecurityKeys::~SecurityKeys()
{
    m_self.reset();
}

WorkerThreads& SecurityKeys::worker()
{
    if (!m_worker) {
        fido_init(FIDO_DISABLE_U2F_FALLBACK); // keys that verify nobody are no help
        m_worker.emplace(1);
    }
    return *m_worker;
}

/// Keys are nodes in /dev; one that was seen before is left alone, since a browser may be using it.
void SecurityKeys::look()
{
    if (m_devices.directories().isEmpty())
        m_devices.addPath(QStringLiteral("/dev"));
    asio::post(worker().executor(), [this, self = std::weak_ptr(m_self)] {
        const auto list = m_lister();
        std::map<std::string, bool> known;
        bool isPresent = false;
        for (std::size_t i = 0; i < list.count; ++i) {
            const auto path = list.pathOf(i);
            const auto before = m_known.find(path);
            const auto isUsable = before != m_known.end() ? std::optional(before->second) : isFido2(list.at(i));
            isPresent |= isUsable.value_or(false);
            if (isUsable)
                known[path] = *isUsable;
        }
        m_known = std::move(known);
        asio::post(m_main, [self, isPresent] {
            if (const auto keys = self.lock())
                (*keys)->setPresent(isPresent);
        });
    });
}

void SecurityKeys::setPresent(bool isPresent)
{
    if (std::exchange(m_isPresent, isPresent) != isPresent)
        Q_EMIT presentChanged();
}

Task<PasskeyAnswer> SecurityKeys::assertion(PasskeyRequest request)
{
    const auto ask = [self = std::weak_ptr(m_self), main = m_main](const PasskeyPrompt& prompt) {
        asio::post(main, [self, prompt] {
            if (const auto keys = self.lock(); keys && (*keys)->m_talk)
                (*keys)->setPrompt(prompt);
        });
    };
    const auto talk = std::make_shared<KeyTalk>(m_lister, ask);
    m_talk = talk;
    const auto over = qScopeGuard([this] {
        m_talk.reset();
        setPrompt({});
    });
    PasskeyAnswer answer;
    const auto work = [&] { answer = talk->run(request); };
    const auto first = co_await firstOf(callOn(worker().executor(), work), cutOff(talk));
    if (auto failure = std::visit([](const auto& ended) { return ended.failure; }, first))
        std::rethrow_exception(failure);
    co_return answer;
}

void SecurityKeys::setPrompt(const PasskeyPrompt& prompt)
{
    if (std::exchange(m_prompt, prompt) != prompt)
        Q_EMIT promptChanged();
}

void SecurityKeys::enterPin(Pin pin)
{
    setPrompt({});
    if (m_talk)
        m_talk->enterPin(std::move(pin));
}

void SecurityKeys::choose(int account)
{
    setPrompt({});
    if (m_talk)
        m_talk->choose(account);
}

void SecurityKeys::cancel()
{
    if (m_talk)
        m_talk->cancel();
}

} // namespace palvera
