#include "service/Addresses.h"

#include <QChar>
#include <QRegularExpression>
#include <QUrl>

namespace palvera {

namespace {

QByteArray escapedPath(const QString& path)
{
    static const QRegularExpression escapedTwice(QStringLiteral("%25([0-9A-Fa-f]{2})"));
    auto escaped = QString::fromLatin1(QUrl::toPercentEncoding(path, "!$&'()*+,;=:@/"));
    return escaped.replace(escapedTwice, QStringLiteral("%\\1")).toLatin1();
}

} // namespace

std::optional<Address> parseAddress(const QString& text)
{
    const QUrl url(text, QUrl::StrictMode);
    const bool web = url.scheme() == u"https" || url.scheme() == u"http";
    if (!url.isValid() || !web || url.host().isEmpty())
        return {};
    QByteArray rest = url.toEncoded(QUrl::RemoveFragment);
    Address address;
    if (const auto mark = rest.indexOf('?'); mark >= 0) {
        address.query = rest.mid(mark + 1);
        rest.truncate(mark);
    }
    const auto slash = rest.indexOf('/', rest.indexOf("://") + 3);
    address.origin = slash < 0 ? rest : rest.left(slash);
    address.path = slash < 0 ? QByteArray() : rest.mid(slash);
    return address;
}

QByteArray joinAddress(const Address& base, const QString& path)
{
    const auto mark = path.indexOf(u'?');
    QByteArray relative = escapedPath(mark < 0 ? path : path.left(mark));
    QByteArray query = mark < 0 ? QByteArray() : path.mid(mark + 1).toUtf8();
    if (query.isEmpty())
        query = base.query;

    QByteArray joined = base.origin + base.path;
    while (joined.endsWith('/'))
        joined.chop(1);
    while (relative.startsWith('/'))
        relative.remove(0, 1);
    joined += '/' + relative;
    return query.isEmpty() ? joined : joined + '?' + query;
}

QString pathSegment(const QString& identifier)
{
    QString segment = identifier;
    segment.replace(u'%', QStringLiteral("%25"));
    segment.replace(u'?', QStringLiteral("%3F"));
    segment.replace(u'#', QStringLiteral("%23"));
    segment.replace(u'/', QStringLiteral("%2F"));
    const bool stepsAside = segment == u"." || segment == u"..";
    return stepsAside ? segment.replace(u'.', QStringLiteral("%2E")) : segment;
}

QString queryValue(const QString& value)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(value, {}, "-._~"));
}

QString alphanumericSegment(const QString& value)
{
    QString segment;
    for (const char32_t character : value.toUcs4()) {
        const QString text = QString::fromUcs4(&character, 1);
        if (QChar::isLetterOrNumber(character) || QChar::isMark(character))
            segment += text;
        else
            segment += queryValue(text);
    }
    return segment;
}

} // namespace palvera
