#pragma once

#include "async/Clock.h"
#include "async/TaskScope.h"
#include "service/SignInRecords.h"

#include <QObject>

#include <functional>
#include <optional>

namespace palvera {

class API;
class NetworkPath;

/// Which ways in the platform offers, asked for until it has said so. Main thread.
class WaysIn : public QObject {
    Q_OBJECT

public:
    /// What it works with. Everything referred to outlives it and its questions.
    struct Environment {
        Executor main; ///< the main thread's
        Clock& clock;
        API& api;
        NetworkPath& network;
    };

    explicit WaysIn(Environment environment) : m_environment(std::move(environment)), m_tasks(m_environment.main) {}

    /// Forgets what is known and asks the service that is in use. After a failure asks again, after 2 to 30 seconds and
    /// when the network returns, as long as `isWelcome` says yes, both at the question and at its answer.
    void ask(std::function<bool()> isWelcome);
    /// Asks at once, unless it is known. Gives whether it is known then.
    Task<bool> askNow();

    /// Nothing as long as the platform has not said.
    const std::optional<AuthConfig>& config() const { return m_config; }
    /// The first question has neither been answered nor failed.
    bool isLoading() const { return m_isLoading; }
    /// It takes its time.
    bool isLate() const { return m_isLate; }

    Task<void> close() { return m_tasks.close(); }

Q_SIGNALS:
    void changed();

private:
    Task<void> keepAsking(std::function<bool()> isWelcome);
    Task<void> noteLate();

    const Environment m_environment;
    TaskScope m_tasks;
    std::optional<AuthConfig> m_config;
    bool m_isLoading = false;
    bool m_isLate = false;
};

} // namespace palvera
