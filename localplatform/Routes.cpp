#include "localplatform/Routes.h"

#include "localplatform/Escapes.h"

namespace palvera::local {

namespace {

using Type = Field::Type;
using enum Route::Door;
constexpr auto mayLack = Field::Presence::optional;
constexpr auto whenNotEmpty = QueryItem::Presence::whenNotEmpty;
constexpr auto always = QueryItem::Presence::required;
constexpr auto number = QueryItem::Value::number;
constexpr auto text = QueryItem::Value::text;
constexpr auto shownText = QueryItem::Value::shownText;
constexpr auto literal = QueryItem::Value::literal;

#define PALVERA_DELIVERABLE "orgs/{org}/projects/{project}/deliverables/{deliverable}"

const Shape emailBody{{"email"}};
const Shape loginBody{{"email"}, {"password"}};
const Shape codeBody{{"code"}};
const Shape grantBody{{"grant"}};
const Shape passkeyBody{
    {"response",
     Type::object,
     {},
     {{"id"},
      {"rawId"},
      {"type"},
      {"response",
       Type::object,
       {},
       {{"clientDataJSON"}, {"authenticatorData"}, {"signature"}, {"userHandle", Type::text, mayLack}}},
      {"authenticatorAttachment"},
      {"clientExtensionResults", Type::emptyObject}}},
    {"challengeId"}};
const Shape startBody{{"filename"}, {"contentType"}, {"byteSize", Type::integer}, {"confirmed", Type::yes, mayLack}};
const Shape binStartBody{{"filename"}, {"contentType"}, {"byteSize", Type::integer}, {"folder", Type::text, mayLack}};
const Shape partsBody{{"object"}, {"uploadId"}, {"from", Type::integer}, {"to", Type::integer}};
const Shape completeBody{
    {"object"}, {"uploadId"}, {"parts", Type::list, {}, {{"partNumber", Type::integer}, {"etag"}}}};
const Shape abortBody{{"object"}, {"uploadId"}};
const Shape confirmBody{{"object"}, {"filename"}, {"durationSeconds", Type::number, mayLack}};
const Shape progressBody{{"bytesSent", Type::integer},
                         {"bytesTotal", Type::integer},
                         {"bytesPerSecond", Type::number, mayLack},
                         {"status", Type::text, mayLack}};

const std::vector<Route> routes{
    {Operation::methods, "POST", "auth/methods", open, emailBody},
    {Operation::config, "GET", "auth/config", open},
    {Operation::me, "GET", "me"},
    {Operation::password, "POST", "auth/password", open, loginBody},
    {Operation::migrate, "POST", "auth/migrate", open, loginBody},
    {Operation::login, "POST", "auth/login", open, loginBody},
    {Operation::verify, "POST", "auth/verify", open, codeBody},
    {Operation::totp, "POST", "auth/totp", open, codeBody},
    {Operation::resend, "POST", "auth/verify/resend", open},
    {Operation::forgot, "POST", "auth/forgot", open, emailBody},
    {Operation::passkeyOptions, "POST", "auth/passkey/options", open},
    {Operation::passkey, "POST", "auth/passkey", open, passkeyBody},
    {Operation::redeem, "POST", "auth/native/redeem", open, grantBody},
    {Operation::logout, "POST", "auth/logout", open},
    {Operation::webStart,
     "GET",
     "auth/workos/start",
     open,
     {},
     {{"native", literal, always, "1"},
      {"return", literal, always, "%2F"},
      {"provider", shownText, whenNotEmpty},
      {"email", shownText, whenNotEmpty}}},
    {Operation::orgs, "GET", "orgs"},
    {Operation::projects, "GET", "orgs/{org}/projects"},
    {Operation::deliverables, "GET", "orgs/{org}/projects/{project}/deliverables"},
    {Operation::assets,
     "GET",
     "orgs/{org}/assets/files",
     signedIn,
     {},
     {{"page", number},
      {"pageSize", number},
      {"sort", literal, always, "newest"},
      {"q", text, whenNotEmpty},
      {"family", text, whenNotEmpty}}},
    {Operation::bin,
     "GET",
     "orgs/{org}/bin",
     signedIn,
     {},
     {{"limit", number}, {"prefix", text, whenNotEmpty}, {"q", text, whenNotEmpty}, {"cursor", text, whenNotEmpty}}},
    {Operation::binDownload, "GET", "orgs/{org}/bin/download", signedIn, {}, {{"key"}}},
    {Operation::assetUrl, "GET", PALVERA_DELIVERABLE "/asset-url", signedIn, {}, {{"object"}}},
    {Operation::start, "POST", PALVERA_DELIVERABLE "/transfer/start", signedIn, startBody},
    {Operation::parts, "POST", PALVERA_DELIVERABLE "/transfer/parts", signedIn, partsBody},
    {Operation::complete, "POST", PALVERA_DELIVERABLE "/transfer/complete", signedIn, completeBody},
    {Operation::abort, "POST", PALVERA_DELIVERABLE "/transfer/abort", signedIn, abortBody},
    {Operation::asset, "POST", PALVERA_DELIVERABLE "/asset", signedIn, confirmBody},
    {Operation::progress, "POST", PALVERA_DELIVERABLE "/transfer/progress", signedIn, progressBody},
    {Operation::binStart, "POST", "orgs/{org}/bin/uploads", signedIn, binStartBody},
    {Operation::parts, "POST", "orgs/{org}/bin/uploads/{session}/parts", signedIn, partsBody},
    {Operation::complete, "POST", "orgs/{org}/bin/uploads/{session}/complete", signedIn, completeBody},
    {Operation::abort, "POST", "orgs/{org}/bin/uploads/{session}/abort", signedIn, abortBody},
};

QByteArrayView pathOf(QByteArrayView target)
{
    auto mark = target.indexOf('?');
    return mark < 0 ? target : target.first(mark);
}

bool isPlaceholder(const QByteArray& piece)
{
    return piece.startsWith('{');
}

QByteArray placeholderName(const QByteArray& piece)
{
    return piece.mid(1, piece.size() - 2);
}

bool fitsPath(const Route& route, const QList<QByteArray>& segments)
{
    auto pieces = QByteArray(route.path).split('/');
    if (pieces.size() != segments.size())
        return false;
    for (qsizetype i = 0; i < pieces.size(); ++i)
        if (isPlaceholder(pieces[i]) ? segments[i].isEmpty() : pieces[i] != segments[i])
            return false;
    return true;
}

std::optional<QList<QByteArray>> segmentsOf(QByteArrayView target)
{
    constexpr QByteArrayView base = "/api/";
    auto path = pathOf(target);
    if (!path.startsWith(base))
        return std::nullopt;
    return path.sliced(base.size()).toByteArray().split('/');
}

QString readSegment(const QByteArray& segment, const QByteArray& name)
{
    auto plain = unescape(segment);
    if (name == "session") {
        if (!plain || sessionSegment(*plain) != segment)
            violate(QStringLiteral("the session in the path is not escaped as it must be"));
    } else if (!plain || !isPathSegment(segment)) {
        violate(QStringLiteral("the path's {%1} is not escaped as a path is").arg(QString::fromUtf8(name)));
    }
    return *plain;
}

void readPath(Call& call, QByteArrayView target)
{
    auto segments = *segmentsOf(target);
    auto pieces = QByteArray(call.route->path).split('/');
    for (qsizetype i = 0; i < pieces.size(); ++i)
        if (isPlaceholder(pieces[i])) {
            auto name = placeholderName(pieces[i]);
            call.values[name] = readSegment(segments[i], name);
        }
}

QString readQueryValue(const QByteArray& value, const QueryItem& rule)
{
    auto name = QString::fromLatin1(rule.name);
    if (rule.value == QueryItem::Value::literal && value != rule.literal)
        violate(QStringLiteral("the query's %1 must be %2").arg(name, QLatin1String(rule.literal)));
    qint64 count = value.toLongLong();
    if (rule.value == QueryItem::Value::number && (count < 1 || QByteArray::number(count) != value))
        violate(QStringLiteral("the query's %1 is not a number from 1").arg(name));
    if (rule.value == QueryItem::Value::text && (value.isEmpty() || !isQueryValue(value)))
        violate(QStringLiteral("the query's %1 is empty or not escaped as a query value is").arg(name));
    auto plain = unescape(value);
    if (!plain)
        violate(QStringLiteral("the query's %1 is not UTF-8").arg(name));
    return *plain;
}

void readQuery(Call& call, QByteArrayView target)
{
    const auto& rules = call.route->query;
    QList<QByteArray> items;
    if (auto mark = target.indexOf('?'); mark >= 0)
        items = target.sliced(mark + 1).toByteArray().split('&');
    qsizetype next = 0;
    for (const auto& rule : rules) {
        auto start = QByteArray(rule.name) + '=';
        if (next < items.size() && items[next].startsWith(start))
            call.values[rule.name] = readQueryValue(items[next++].mid(start.size()), rule);
        else if (rule.presence == QueryItem::Presence::required)
            violate(QStringLiteral("the query lacks %1 at its place").arg(QLatin1String(rule.name)));
    }
    if (next < items.size())
        violate(
            QStringLiteral("the query holds something unexpected or out of order after its first %1 items").arg(next));
}

} // namespace

const Route* findRoute(QByteArrayView method, QByteArrayView target)
{
    auto segments = segmentsOf(target);
    if (!segments)
        return nullptr;
    for (const auto& route : routes)
        if (method == QByteArrayView(route.method) && fitsPath(route, *segments))
            return &route;
    return nullptr;
}

Call readCall(const RequestHead& head)
{
    Call call{.route = findRoute(head.method, head.target), .values = {}};
    if (!call.route)
        throw Refusal{.status = 404,
                      .error = QStringLiteral("not_found"),
                      .message = QStringLiteral("There is no such call."),
                      .violation = true};
    readPath(call, head.target);
    readQuery(call, head.target);
    return call;
}

} // namespace palvera::local
