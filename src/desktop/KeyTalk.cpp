#include "desktop/KeyTalk.h"

#include <QCryptographicHash>
#include <QObject>
#include <QString>

#include <chrono>
#include <thread>
#include <utility>

namespace palvera {

using namespace std::chrono_literals;
using Kind = PasskeyPrompt::Kind;

namespace {

constexpr auto lookInterval = 250ms;
/// A cancellation that reaches the key just before the request does is lost: it is repeated until the key is back.
constexpr auto cancelInterval = 50ms;
/// libfido2 does not say when the key has taken the PIN; one that it refuses is back before.
constexpr auto pinCheck = 150ms;
constexpr int touchPoll = 30; // ms
constexpr auto pause = 10ms;  // between two rounds of polls: a key that was taken out answers at once
// A key that says nothing any more must not keep its user waiting. Keys themselves wait for a hand for half a minute.
constexpr int answerLimit = 3'000; // ms
constexpr int handLimit = 60'000;  // ms

/// Whether it is open or not, it goes by fido_dev_close and fido_dev_free.
fido_dev_t* opened(const fido_dev_info_t* key, bool& isOpen)
{
    auto* device = fido_dev_new_with_info(key);
    isOpen =
        device && fido_dev_set_timeout(device, answerLimit) == FIDO_OK && fido_dev_open_with_info(device) == FIDO_OK;
    return device;
}

const unsigned char* bytes(const QByteArray& from)
{
    return reinterpret_cast<const unsigned char*>(from.constData());
}

QByteArray copy(const unsigned char* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), qsizetype(size)};
}

/// libfido2 1.12 gives it as a CBOR byte string (RFC 8949, 3.1): the head goes.
QByteArray unwrapped(const QByteArray& data)
{
    constexpr char oneByteLength = 0x58, twoByteLength = 0x59;
    return data.mid(data.startsWith(oneByteLength) ? 2 : data.startsWith(twoByteLength) ? 3 : 1);
}

[[noreturn]] void fail(const QString& text)
{
    throw PasskeyFailure(text);
}

void checkResult(int result)
{
    switch (result) {
    case FIDO_OK:
        return;
    case FIDO_ERR_KEEPALIVE_CANCEL:
        throw PasskeyCancelled();
    case FIDO_ERR_NO_CREDENTIALS:
        fail(QObject::tr("This security key holds no passkey for Palvera."));
    case FIDO_ERR_PIN_NOT_SET:
        fail(QObject::tr("This security key has no PIN yet. Set one in your browser's settings."));
    case FIDO_ERR_PIN_BLOCKED:
        fail(QObject::tr("This security key is locked: its PIN was wrong too often."));
    case FIDO_ERR_PIN_AUTH_BLOCKED:
        fail(QObject::tr("Too many wrong PINs. Take the security key out and put it in again."));
    case FIDO_ERR_ACTION_TIMEOUT:
    case FIDO_ERR_USER_ACTION_TIMEOUT:
    case FIDO_ERR_OPERATION_DENIED:
        fail(QObject::tr("This security key was not touched in time. Try again."));
    case FIDO_ERR_TX:
    case FIDO_ERR_RX:
        fail(QObject::tr("This security key was taken out. Put it in and try again."));
    default:
        fail(QObject::tr("This security key did not answer (%1).").arg(QLatin1String(fido_strerr(result))));
    }
}

bool asksForPin(int result)
{
    return result == FIDO_ERR_PIN_REQUIRED || result == FIDO_ERR_PIN_INVALID || result == FIDO_ERR_UV_INVALID ||
           result == FIDO_ERR_UV_BLOCKED;
}

} // namespace

KeyList keysOfMachine()
{
    constexpr std::size_t most = 64;
    KeyList list{.keys = {fido_dev_info_new(most), {most}}};
    if (!list.keys || fido_dev_info_manifest(list.keys.get(), most, &list.count) != FIDO_OK)
        list.count = 0;
    return list;
}

void KeyTalk::Close::operator()(fido_dev_t* device) const
{
    fido_dev_close(device);
    fido_dev_free(&device);
}

std::optional<bool> isFido2(const fido_dev_info_t* key)
{
    bool isOpen = false;
    auto* device = opened(key, isOpen);
    std::optional<bool> is;
    if (isOpen)
        is = fido_dev_is_fido2(device);
    fido_dev_close(device);
    fido_dev_free(&device);
    return is;
}

KeyTalk::KeyTalk(KeyLister lister, std::function<void(const PasskeyPrompt&)> ask)
    : m_lister(std::move(lister)), m_ask(std::move(ask))
{}

void KeyTalk::cancel()
{
    {
        std::lock_guard guard(m_lock);
        m_isCancelled = true;
    }
    m_changed.notify_all();
}

void KeyTalk::enterPin(Pin pin)
{
    {
        std::lock_guard guard(m_lock);
        m_pin.emplace(std::move(pin));
    }
    m_changed.notify_all();
}

void KeyTalk::choose(int account)
{
    {
        std::lock_guard guard(m_lock);
        m_account = account;
    }
    m_changed.notify_all();
}

void KeyTalk::check()
{
    std::lock_guard guard(m_lock);
    if (m_isCancelled)
        throw PasskeyCancelled();
}

PasskeyAnswer KeyTalk::run(const PasskeyRequest& request)
{
    const auto device = waitForKey();
    const auto hash = QCryptographicHash::hash(request.clientData, QCryptographicHash::Sha256);
    const Assertion assertion(fido_assert_new());
    checkResult(fido_assert_set_clientdata_hash(assertion.get(), bytes(hash), std::size_t(hash.size())));
    checkResult(fido_assert_set_rp(assertion.get(), request.relyingParty.constData()));
    for (const auto& id : request.allowed)
        checkResult(fido_assert_allow_cred(assertion.get(), bytes(id), std::size_t(id.size())));
    const int result = sign(device.get(), assertion.get());
    check();
    checkResult(result);
    const auto chosen = chosenOf(assertion.get());
    const auto* made = assertion.get();
    PasskeyAnswer answer{.credential = copy(fido_assert_id_ptr(made, chosen), fido_assert_id_len(made, chosen)),
                         .authenticatorData = unwrapped(
                             copy(fido_assert_authdata_ptr(made, chosen), fido_assert_authdata_len(made, chosen))),
                         .signature = copy(fido_assert_sig_ptr(made, chosen), fido_assert_sig_len(made, chosen)),
                         .user = copy(fido_assert_user_id_ptr(made, chosen), fido_assert_user_id_len(made, chosen))};
    if (answer.credential.isEmpty() && request.allowed.size() == 1) // which a key need not repeat (CTAP 2.0, 5.2)
        answer.credential = request.allowed.first();
    return answer;
}

KeyTalk::Device KeyTalk::waitForKey()
{
    for (bool isAsked = false;;) {
        auto devices = openNew();
        check();
        if (devices.size() == 1)
            return std::move(devices.front());
        if (!devices.empty()) {
            if (auto chosen = touchedOf(std::move(devices)))
                return chosen;
            isAsked = false;
            continue;
        }
        if (!std::exchange(isAsked, true))
            m_ask({.kind = Kind::insert});
        std::unique_lock guard(m_lock);
        m_changed.wait_for(guard, lookInterval, [this] { return m_isCancelled; });
    }
}

/// One that cannot be opened is tried again: its node may be there before the right to use it.
std::vector<KeyTalk::Device> KeyTalk::openNew()
{
    const auto list = m_lister();
    std::vector<Device> usable;
    std::set<std::string> useless;
    for (std::size_t i = 0; i < list.count; ++i) {
        const auto path = list.pathOf(i);
        if (m_useless.contains(path)) {
            useless.insert(path);
            continue;
        }
        bool isOpen = false;
        Device device(opened(list.at(i), isOpen));
        if (!isOpen)
            continue;
        if (fido_dev_is_fido2(device.get()))
            usable.push_back(std::move(device));
        else
            useless.insert(path);
    }
    m_useless = std::move(useless);
    return usable;
}

std::set<std::string> KeyTalk::pathsNow() const
{
    const auto list = m_lister();
    std::set<std::string> paths;
    for (std::size_t i = 0; i < list.count; ++i)
        paths.insert(list.pathOf(i));
    return paths;
}

/// Has every key blink; the one that is touched is meant. Null when one has given up, or other keys are there than
/// were: a key that was taken out just says nothing.
KeyTalk::Device KeyTalk::touchedOf(std::vector<Device> devices)
{
    const auto before = pathsNow();
    for (const auto& device : devices)
        fido_dev_get_touch_begin(device.get());
    m_ask({.kind = Kind::which});
    Device chosen;
    bool isOver = false;
    for (auto nextLook = std::chrono::steady_clock::now() + lookInterval; !chosen && !isOver;) {
        for (auto& device : devices) {
            int isTouched = 0;
            isOver |= fido_dev_get_touch_status(device.get(), &isTouched, touchPoll) != FIDO_OK;
            if (isTouched) {
                chosen = std::move(device);
                break;
            }
        }
        if (const auto now = std::chrono::steady_clock::now(); now >= nextLook) {
            isOver |= pathsNow() != before;
            nextLook = now + lookInterval;
        }
        std::unique_lock guard(m_lock);
        isOver |= m_changed.wait_for(guard, pause, [this] { return m_isCancelled; });
    }
    for (const auto& device : devices)
        if (device)
            fido_dev_cancel(device.get()); // it stops blinking
    check();
    return chosen;
}

/// By the finger where the key knows it, else or after that by the PIN.
int KeyTalk::sign(fido_dev_t* device, fido_assert_t* assertion)
{
    int result = FIDO_ERR_PIN_REQUIRED;
    if (fido_dev_has_uv(device)) {
        fido_assert_set_uv(assertion, FIDO_OPT_TRUE);
        result = perform(device, assertion, nullptr, Shows::touchAtOnce);
    } else if (!fido_dev_has_pin(device)) {
        return FIDO_ERR_PIN_NOT_SET;
    }
    for (bool isWrong = false; asksForPin(result) && fido_dev_has_pin(device);
         isWrong = result == FIDO_ERR_PIN_INVALID) {
        int left = -1;
        fido_dev_get_retry_count(device, &left);
        if (left == 0)
            return FIDO_ERR_PIN_BLOCKED;
        const auto pin = waitForPin(left, isWrong);
        fido_assert_set_uv(assertion, FIDO_OPT_OMIT); // the PIN says it, and some keys refuse both together
        result = perform(device, assertion, pin.text(), Shows::touchOnceThePinIsTaken);
    }
    return result;
}

int KeyTalk::perform(fido_dev_t* device, fido_assert_t* assertion, const char* pin, Shows shows)
{
    check();
    if (shows == Shows::touchAtOnce)
        m_ask({.kind = Kind::touch});
    bool isBack = false; // guarded by m_lock
    std::jthread meanwhile([&] {
        std::unique_lock guard(m_lock);
        const auto isOver = [&] { return isBack || m_isCancelled; };
        if (shows == Shows::touchOnceThePinIsTaken && !m_changed.wait_for(guard, pinCheck, isOver)) {
            guard.unlock();
            m_ask({.kind = Kind::touch});
            guard.lock();
        }
        m_changed.wait(guard, isOver);
        while (!isBack) {
            fido_dev_cancel(device);
            m_changed.wait_for(guard, cancelInterval, [&] { return isBack; });
        }
    });
    fido_dev_set_timeout(device, handLimit);
    const int result = fido_dev_get_assert(device, assertion, pin);
    fido_dev_set_timeout(device, answerLimit);
    {
        std::lock_guard guard(m_lock);
        isBack = true;
    }
    m_changed.notify_all();
    return result;
}

Pin KeyTalk::waitForPin(int triesLeft, bool isWrong)
{
    {
        std::lock_guard guard(m_lock);
        m_pin.reset(); // entered before it was asked for
    }
    m_ask({.kind = Kind::pin, .triesLeft = triesLeft, .isWrong = isWrong});
    std::unique_lock guard(m_lock);
    m_changed.wait(guard, [this] { return m_isCancelled || m_pin; });
    if (m_isCancelled)
        throw PasskeyCancelled();
    Pin pin(std::move(*m_pin));
    m_pin.reset();
    return pin;
}

/// Among the accounts that the key has for the relying party.
std::size_t KeyTalk::chosenOf(fido_assert_t* assertion)
{
    const auto count = fido_assert_count(assertion);
    if (count < 2)
        return 0;
    PasskeyPrompt prompt{.kind = Kind::account};
    for (std::size_t i = 0; i < count; ++i) {
        const char* name = fido_assert_user_name(assertion, i);
        if (!name)
            name = fido_assert_user_display_name(assertion, i);
        prompt.names.append(QString::fromUtf8(name));
    }
    m_ask(prompt);
    std::unique_lock guard(m_lock);
    m_changed.wait(guard, [this] { return m_isCancelled || m_account; });
    if (m_isCancelled)
        throw PasskeyCancelled();
    return std::min(std::size_t(std::max(0, *m_account)), count - 1);
}

} // namespace palvera
