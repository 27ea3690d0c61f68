#pragma once

#include "desktop/PasskeyService.h"

#include <fido.h>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace palvera {

/// The security keys that are there, as libfido2 lists them.
struct KeyList {
    struct Free {
        std::size_t room;
        void operator()(fido_dev_info_t* list) const { fido_dev_info_free(&list, room); }
    };
    std::unique_ptr<fido_dev_info_t, Free> keys;
    std::size_t count = 0;

    const fido_dev_info_t* at(std::size_t index) const { return fido_dev_info_ptr(keys.get(), index); }
    std::string pathOf(std::size_t index) const { return fido_dev_info_path(at(index)); }
};
using KeyLister = std::function<KeyList()>;

/// Those of this machine.
KeyList keysOfMachine();
/// Whether a key verifies its user, as older ones do not; nothing when it cannot be opened. Blocks.
std::optional<bool> isFido2(const fido_dev_info_t* key);

/// One talk with a security key, from looking for it to the signature. It blocks a thread of its own; everything but
/// `run` may be called on any thread.
class KeyTalk {
public:
    /// `ask` is called on some thread with each question.
    KeyTalk(KeyLister lister, std::function<void(const PasskeyPrompt&)> ask);

    /// Blocks until the key has signed. Throws PasskeyFailure.
    PasskeyAnswer run(const PasskeyRequest& request);
    void enterPin(Pin pin);
    void choose(int account);
    /// Has `run` end soon, with PasskeyCancelled.
    void cancel();

private:
    struct Close {
        void operator()(fido_dev_t* device) const;
    };
    using Device = std::unique_ptr<fido_dev_t, Close>;
    struct FreeAssertion {
        void operator()(fido_assert_t* assertion) const { fido_assert_free(&assertion); }
    };
    using Assertion = std::unique_ptr<fido_assert_t, FreeAssertion>;
    enum class Shows { touchAtOnce, touchOnceThePinIsTaken };

    Device waitForKey();
    std::vector<Device> openNew();
    Device touchedOf(std::vector<Device> devices);
    std::set<std::string> pathsNow() const;
    int sign(fido_dev_t* device, fido_assert_t* assertion);
    int perform(fido_dev_t* device, fido_assert_t* assertion, const char* pin, Shows shows);
    std::size_t chosenOf(fido_assert_t* assertion);
    Pin waitForPin(int triesLeft, bool isWrong);
    void check();

    const KeyLister m_lister;
    const std::function<void(const PasskeyPrompt&)> m_ask;
    std::set<std::string> m_useless; // keys that are no help, by their paths; the running thread's
    std::mutex m_lock;
    std::condition_variable m_changed;
    // Guarded by m_lock.
    bool m_isCancelled = false;
    std::optional<Pin> m_pin;
    std::optional<int> m_account;
};

} // namespace palvera
