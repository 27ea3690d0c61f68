#include "localplatform/Escapes.h"

#include <QRegularExpression>
#include <QStringDecoder>

namespace palvera::local {

std::optional<QString> unescape(QByteArrayView escaped)
{
    static const QRegularExpression cutShort(QStringLiteral("%(?![0-9A-Fa-f]{2})"));
    if (QString::fromLatin1(escaped).contains(cutShort))
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(QByteArray::fromPercentEncoding(escaped.toByteArray()));
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

QByteArray escapeAll(const QByteArray& text)
{
    return text.toPercentEncoding({}, "-._~");
}

bool isQueryValue(const QByteArray& value)
{
    return value == escapeAll(QByteArray::fromPercentEncoding(value));
}

bool isPathSegment(QByteArrayView segment)
{
    static const QRegularExpression proper(QRegularExpression::anchoredPattern(
        QStringLiteral("(?:[A-Za-z0-9\\-._~!$&'()*+,;=:@]|" // what stays as it is
                       "%(?!3[0-9]|4[1-9A-F]|5[0-9A]|6[1-9A-F]|7[0-9A]|2D|2E|5F|7E)[0-9A-F]{2})*")));
    return proper.match(QString::fromLatin1(segment)).hasMatch();
}

QByteArray sessionSegment(const QString& session)
{
    QByteArray once;
    for (char32_t letter : session.toUcs4()) {
        QByteArray bytes = QString::fromUcs4(&letter, 1).toUtf8();
        once += QChar::isLetterOrNumber(letter) || QChar::isMark(letter) ? bytes : escapeAll(bytes);
    }
    return once.toPercentEncoding("!$&'()*+,;=:@").replace("%25", "%"); // what is escaped already
}

} // namespace palvera::local
