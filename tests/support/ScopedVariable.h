#pragma once

#include <QByteArray>

#include <optional>

namespace palvera {

/// Sets or unsets a variable of the environment until it goes out of scope.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const std::optional<QByteArray>& value)
        : m_name(name), m_before(qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt)
    {
        set(value);
    }
    ~ScopedVariable() { set(m_before); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    void set(const std::optional<QByteArray>& value)
    {
        if (value)
            qputenv(m_name, *value);
        else
            qunsetenv(m_name);
    }

    const char* m_name;
    std::optional<QByteArray> m_before;
};

} // namespace palvera
