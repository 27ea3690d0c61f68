#include "service/InternetDate.h"

#include <QRegularExpression>

namespace palvera {

std::optional<QDateTime> parseInternetDate(const QString& text)
{
    // Qt alone would also take a date without a time, or a time without a zone.
    static const QRegularExpression shape(
        QStringLiteral("\\A\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(\\.\\d+)?(Z|[+-]\\d\\d:?\\d\\d)\\z"));
    if (!shape.match(text).hasMatch())
        return {};
    const QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
    return moment.isValid() ? std::optional(moment) : std::nullopt;
}

} // namespace palvera
