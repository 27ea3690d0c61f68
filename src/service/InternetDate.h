#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace palvera {

/// The moment that `text`, an ISO 8601 date and time with a zone such as "2026-01-31T12:00:00.5Z", names, to the
/// millisecond and with or without a fraction. Nothing for any other text.
std::optional<QDateTime> parseInternetDate(const QString& text);

} // namespace palvera
