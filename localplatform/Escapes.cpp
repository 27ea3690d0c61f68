#include "localplatform/Escapes.h"

#include <QStringDecoder>

namespace palvera::local {

namespace {

int hexDigit(char digit, bool lowerToo)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    if (lowerToo && digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return -1;
}

bool isAlphanumeric(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isUnreserved(char c)
{
    return isAlphanumeric(c) || QByteArrayView("-._~").contains(c);
}

bool staysInPath(char c)
{
    return isUnreserved(c) || QByteArrayView("!$&'()*+,;=:@").contains(c);
}

void appendEscape(QByteArray& into, char byte)
{
    constexpr char digits[] = "0123456789ABCDEF";
    auto value = static_cast<unsigned char>(byte);
    into.append('%').append(digits[value >> 4]).append(digits[value & 15]);
}

template <class Stays>
QByteArray escapeBut(QByteArrayView text, Stays stays)
{
    QByteArray escaped;
    for (char byte : text)
        if (stays(byte))
            escaped.append(byte);
        else
            appendEscape(escaped, byte);
    return escaped;
}

/// Walks `text`: every plain byte must pass `plain`, every escape be in upper case and stand for one that passes
/// `escapable`.
template <class Plain, class Escapable>
bool isEscapedBy(QByteArrayView text, Plain plain, Escapable escapable)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            if (!plain(text[i]))
                return false;
            continue;
        }
        if (i + 2 >= text.size())
            return false;
        int high = hexDigit(text[i + 1], false), low = hexDigit(text[i + 2], false);
        if (high < 0 || low < 0 || !escapable(static_cast<char>(high * 16 + low)))
            return false;
        i += 2;
    }
    return true;
}

} // namespace

std::optional<QString> unescape(QByteArrayView escaped)
{
    QByteArray bytes;
    for (qsizetype i = 0; i < escaped.size(); ++i) {
        if (escaped[i] != '%') {
            bytes.append(escaped[i]);
            continue;
        }
        if (i + 2 >= escaped.size())
            return std::nullopt;
        int high = hexDigit(escaped[i + 1], true), low = hexDigit(escaped[i + 2], true);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes.append(static_cast<char>(high * 16 + low));
        i += 2;
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

QByteArray escapeAll(QByteArrayView text)
{
    return escapeBut(text, isAlphanumeric);
}

bool isQueryValue(QByteArrayView value)
{
    return isEscapedBy(value, isAlphanumeric, [](char byte) { return !isAlphanumeric(byte); });
}

bool isPathSegment(QByteArrayView segment)
{
    return isEscapedBy(segment, staysInPath, [](char byte) { return !isUnreserved(byte); });
}

QByteArray sessionSegment(const QString& session)
{
    QByteArray once;
    for (char32_t letter : session.toUcs4()) {
        QByteArray bytes = QString::fromUcs4(&letter, 1).toUtf8();
        once += QChar::isLetterOrNumber(letter) || QChar::isMark(letter) ? bytes : escapeAll(bytes);
    }
    return escapeBut(once, [](char c) { return c == '%' || staysInPath(c); });
}

} // namespace palvera::local
