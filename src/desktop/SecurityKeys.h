#pragma once

#include "async/Task.h"
#include "async/WorkerThreads.h"
#include "desktop/PasskeyService.h"

#include <QFileSystemWatcher>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace palvera {

class KeyTalk;
struct KeyList;

/// The FIDO2 security keys that are plugged in, by libfido2. What it does with them blocks a thread of its own, which
/// comes to be with the first `look` or `assertion`.
///
/// Coroutines that it has under way must be over before it goes.
class SecurityKeys final : public PasskeyService {
    Q_OBJECT

public:
    /// `main` is the main thread's; `lister` says which keys there are, those of the machine unless given.
    explicit SecurityKeys(Executor main, std::function<KeyList()> lister = {}, QObject* parent = nullptr);
    ~SecurityKeys() override;

    bool isPresent() const override { return m_isPresent; }
    void look() override;
    Task<PasskeyAnswer> assertion(PasskeyRequest request) override;
    const PasskeyPrompt& prompt() const override { return m_prompt; }
    void enterPin(Pin pin) override;
    void choose(int account) override;
    void cancel() override;

private:
    WorkerThreads& worker();
    void setPresent(bool isPresent);
    void setPrompt(const PasskeyPrompt& prompt);

    const Executor m_main;
    const std::function<KeyList()> m_lister;
    bool m_isPresent = false;
    PasskeyPrompt m_prompt;
    std::shared_ptr<KeyTalk> m_talk;     // while there is one
    std::map<std::string, bool> m_known; // whether each is a FIDO2 key, by their paths; the worker's
    QFileSystemWatcher m_devices;
    std::shared_ptr<SecurityKeys*> m_self =
        std::make_shared<SecurityKeys*>(this); // for what comes back from the worker
    std::optional<WorkerThreads> m_worker;
};

} // namespace palvera
