#pragma once

#include <QString>

#include <exception>
#include <optional>
#include <string>

namespace palvera {

/// A failure with a text for the user, as it came: `describe` makes it fit to be shown. Never holds an address, a
/// cookie or a password.
class Failure : public std::exception {
public:
    explicit Failure(const QString& text) : m_text(text), m_utf8(text.toStdString()) {}

    const QString& text() const { return m_text; }
    const char* what() const noexcept override { return m_utf8.c_str(); }

private:
    QString m_text;
    std::string m_utf8;
};

/// Throws what a cancelled wait throws.
[[noreturn]] void throwCancelled();

/// Whether `failure` is a cancellation. A null pointer is not.
bool isCancellation(const std::exception_ptr& failure);

/// The E that `failure` is, a class derived from E included; nothing for any other and for null.
template <class E>
std::optional<E> failureAs(const std::exception_ptr& failure)
{
    if (!failure)
        return {};
    try {
        std::rethrow_exception(failure);
    } catch (const E& known) {
        return known;
    } catch (...) {
        return {};
    }
}

/// What to show for `failure`, which may be words from outside: visible text of several lines at most, never empty. The
/// text of a Failure, else what the exception says of itself.
QString describe(const std::exception_ptr& failure);

} // namespace palvera
