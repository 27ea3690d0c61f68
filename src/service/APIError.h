#pragma once

#include "async/Failure.h"

#include <optional>

namespace palvera {

/// The platform said no, or an engine says it in the same form. Its text is the message for the user.
class APIError : public Failure {
public:
    explicit APIError(qint64 status, const QString& message, std::optional<QString> code = {})
        : Failure(message), m_status(status), m_code(std::move(code))
    {}

    /// The error for an answer outside 200 to 299. The message and the code are the body's "message" and "error",
    /// provided that the body is a JSON object of nothing but texts; else the message is composed and there is no code.
    static APIError fromAnswer(int status, const QByteArray& body);

    /// The answer's HTTP status; 0 when the error is not about an answer.
    qint64 status() const { return m_status; }
    /// Whether it is refused because nobody is signed in.
    bool asksToSignIn() const { return m_status == 401; }
    const QString& message() const { return text(); }
    /// The platform's reason for programs, such as "delivery_doubt".
    const std::optional<QString>& code() const { return m_code; }

private:
    qint64 m_status;
    std::optional<QString> m_code;
};

/// Whether `failure` is the platform's refusal because nobody is signed in.
bool asksToSignIn(const std::exception_ptr& failure);

} // namespace palvera
