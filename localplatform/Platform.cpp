#include "localplatform/Platform.h"

#include "localplatform/ByteRange.h"
#include "localplatform/Escapes.h"
#include "localplatform/FolderStore.h"
#include "localplatform/HeaderRules.h"

#include <QCryptographicHash>
#include <QDateTime>

namespace palvera::local {

namespace {

std::unique_ptr<ByteStore> makeStore(const PlatformOptions& options)
{
    if (options.discard)
        return makeNullStore();
    return options.folder.isEmpty() ? makeMemoryStore() : makeFolderStore(options.folder);
}

/// Tells an object from what stands under the same key later: from its size and its ends, so that it costs no reading.
QByteArray tagOf(const QString& key, const StoredObject& object)
{
    constexpr qint64 longestEnd = 4096;
    QByteArray end(std::min(longestEnd, object.size()), Qt::Uninitialized);
    const auto bytes = std::span(end.data(), static_cast<std::size_t>(end.size()));
    QCryptographicHash hash(QCryptographicHash::Md5);
    hash.addData(key.toUtf8() + QByteArray::number(object.size()));
    for (qint64 offset : {qint64{0}, object.size() - end.size()}) {
        object.read(offset, bytes);
        hash.addData(end);
    }
    return '"' + hash.result().toHex() + '"';
}

bool isPage(const RequestHead& head)
{
    return head.target.startsWith("/sign-in");
}

} // namespace

PartReceiver::PartReceiver(Platform& platform, Uploads::Arrival arrival)
    : m_platform(platform), m_arrival(std::move(arrival))
{}

PartReceiver::~PartReceiver()
{
    std::lock_guard guard(m_platform.m_lock);
    m_platform.m_uploads.closePart(m_arrival);
}

void PartReceiver::write(std::span<const char> bytes)
{
    if (m_arrival.md5)
        m_arrival.md5->addData(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    if (m_arrival.writer)
        m_arrival.writer->write(bytes);
}

Reply PartReceiver::finish(const Fault& fault)
{
    if (!fault.acts())
        return spoil({}, fault);
    std::lock_guard guard(m_platform.m_lock);
    try {
        return spoil(m_platform.m_uploads.keepPart(m_arrival), fault);
    } catch (const Refusal& refusal) {
        return storageRefusal(refusal.status, refusal.error.toLatin1(), refusal.message.toUtf8());
    }
}

Platform::Platform(PlatformOptions options, WallClock wallNow)
    : m_options(std::move(options)),
      m_wallNow(std::move(wallNow)),
      m_stateFile(m_options.folder),
      m_updates(m_options.update),
      m_storageAddress(m_options.storageAddress),
      m_store(makeStore(m_options)),
      m_partsLog(m_options.folder),
      m_uploads(m_catalogue, *m_store, m_partsLog, m_options.partSize, m_options.tags)
{
    auto state = m_stateFile.load();
    m_signIn.fromJson(state[QStringLiteral("sessions")].toArray());
    m_signIn.passkeys().fromJson(state[QStringLiteral("passkeys")].toArray());
    m_uploads.fromJson(state[QStringLiteral("uploads")].toObject());
}

void Platform::setStorageAddress(const QByteArray& address)
{
    std::lock_guard guard(m_lock);
    m_storageAddress = address;
}

Operation Platform::operationOf(const RequestHead& head) const
{
    if (const auto* route = findRoute(head.method, head.target))
        return route->operation;
    if (Updates::isFeed(head))
        return Operation::feed;
    if (Updates::isImage(head))
        return Operation::image;
    if (!head.target.startsWith("/vault"))
        return Operation::unknown;
    return head.method == "PUT" ? Operation::put : head.method == "GET" ? Operation::get : Operation::unknown;
}

std::optional<int> Platform::partOf(const RequestHead& head) const
{
    if (operationOf(head) != Operation::put)
        return std::nullopt;
    try {
        auto place = placeOf(head.target);
        if (const auto* part = std::get_if<PartPlace>(&place))
            return part->part;
    } catch (const Refusal&) { // openPart says so
    }
    return std::nullopt;
}

Fault Platform::meet(const RequestHead& head)
{
    auto operation = operationOf(head);
    {
        std::lock_guard guard(m_lock);
        ++m_requests[operation];
    }
    return m_faults.meet(operation, partOf(head));
}

Reply Platform::serve(const RequestHead& head, const QByteArray& body, const Fault& fault)
{
    if (!fault.acts())
        return spoil({}, fault);
    std::lock_guard guard(m_lock);
    try {
        if (Updates::isFeed(head))
            return spoil(m_updates.feed(m_storageAddress), fault);
        return spoil(isPage(head) ? answerPage(head, body) : answer(head, body, fault), fault);
    } catch (const Refusal& refusal) {
        note(head, refusal);
        return refusalReply(refusal);
    }
}

Reply Platform::answer(const RequestHead& head, const QByteArray& body, const Fault& fault)
{
    auto call = readCall(head);
    const auto& route = *call.route;
    if (route.operation != Operation::webStart) // asked for by a browser, which sends what it likes
        checkServiceHeaders(head.headers, route.body ? Body::json : Body::none);
    if (!route.body && !body.isEmpty())
        violate(QStringLiteral("a body where none belongs"));
    auto cookies = headerOf(head.headers, "Cookie");
    if (route.door == Route::Door::signedIn && m_options.signInNeeded)
        m_signIn.checkSignedIn(cookies, m_wallNow());
    auto reply = answerCall(call, route.body ? readBody(body, *route.body) : QJsonObject(), cookies, fault);
    if (changesState(route.operation))
        save();
    return reply;
}

Reply Platform::answerCall(const Call& call, const QJsonObject& body, const QByteArray& cookies, const Fault& fault)
{
    switch (call.route->operation) {
    case Operation::orgs:
        return m_catalogue.orgs();
    case Operation::projects:
        return m_catalogue.projects(call);
    case Operation::deliverables:
        return m_catalogue.deliverables(call);
    case Operation::assets:
        return m_catalogue.assetFiles(call);
    case Operation::bin:
        return m_catalogue.bin(call);
    case Operation::binDownload: {
        auto url = signedUrl(m_catalogue.binObject(call));
        url[QStringLiteral("filename")] = call.value("key").section(u'/', -1);
        url[QStringLiteral("expiresInSeconds")] = qint64{m_options.addressLife.count()};
        return jsonReply(url);
    }
    case Operation::assetUrl:
        return jsonReply(signedUrl(m_catalogue.rowObject(call)));
    case Operation::start:
    case Operation::binStart:
    case Operation::parts:
    case Operation::complete:
    case Operation::abort:
    case Operation::asset:
    case Operation::progress:
        return m_uploads.answer(
            call, body, {.now = m_wallNow(), .addressLife = m_options.addressLife, .storageAddress = m_storageAddress},
            fault);
    case Operation::unknown:
    case Operation::methods:
    case Operation::config:
    case Operation::me:
    case Operation::password:
    case Operation::migrate:
    case Operation::login:
    case Operation::verify:
    case Operation::totp:
    case Operation::resend:
    case Operation::forgot:
    case Operation::passkeyOptions:
    case Operation::passkey:
    case Operation::redeem:
    case Operation::logout:
    case Operation::webStart:
    case Operation::put:
    case Operation::get:
    case Operation::feed:
    case Operation::image:
        break;
    }
    return m_signIn.answer(call, body, cookies, m_wallNow());
}

Reply Platform::answerPage(const RequestHead& head, const QByteArray& body)
{
    if (head.method == "GET")
        return m_signIn.webDoor().page(head.target, m_wallNow());
    auto reply = m_signIn.webDoor().post(head.target, body, headerOf(head.headers, "Host"), m_wallNow());
    save(); // a passkey that was added
    return reply;
}

QJsonObject Platform::signedUrl(const QString& key)
{
    auto target = objectTarget({.key = key}, m_wallNow() + m_options.addressLife);
    return {{QStringLiteral("url"), QString::fromLatin1(m_storageAddress + target)}};
}

PartOpening Platform::openPart(const RequestHead& head, qint64 length, const Fault& fault)
{
    if (!fault.acts())
        return {.receiver = nullptr, .refusal = spoil({}, fault)};
    std::unique_lock guard(m_lock);
    try {
        checkStorage(head);
        auto place = placeOf(head.target);
        const auto* part = std::get_if<PartPlace>(&place);
        if (!part)
            violate(QStringLiteral("a PUT to an object"));
        auto arrival = m_uploads.openPart(*part, length);
        guard.unlock(); // a receiver that is dropped takes the lock
        return {.receiver = std::make_unique<PartReceiver>(*this, std::move(arrival))};
    } catch (const Refusal& refusal) {
        return {.receiver = nullptr, .refusal = storageReply(head, refusal)};
    }
}

Download Platform::download(const RequestHead& head, const Fault& fault)
{
    if (!fault.acts())
        return {.reply = spoil({}, fault)};
    std::lock_guard guard(m_lock);
    try {
        if (Updates::isImage(head))
            return downloadUpdate(head, fault);
        checkStorage(head);
        auto place = placeOf(head.target);
        const auto* wanted = std::get_if<ObjectPlace>(&place);
        if (!wanted)
            violate(QStringLiteral("a GET of a part"));
        auto object = m_uploads.object(wanted->key);
        if (!object)
            object = m_catalogue.sample(wanted->key);
        if (!object)
            refuse(404, QStringLiteral("NoSuchKey"), QStringLiteral("The object does not exist."));
        Reply reply{.headers = {{"Accept-Ranges", "bytes"}, {"Content-Type", "application/octet-stream"}}};
        ByteRange range{.first = 0, .last = object->size() - 1};
        reply.headers.append(
            {"ETag", fault.kind == Fault::Kind::otherTag ? "\"another\"" : tagOf(wanted->key, *object)});
        auto header = headerOf(head.headers, "Range");
        if (!header.isNull() && fault.kind != Fault::Kind::ignoreRange) {
            range = readRange(header, object->size());
            reply.status = 206;
            qint64 off = fault.kind == Fault::Kind::wrongRange ? 1 : 0;
            reply.headers.append({"Content-Range", contentRange(range, object->size(), off)});
        }
        auto length = range.length();
        if (fault.kind == Fault::Kind::shortBody)
            length = std::max<qint64>(length - fault.bytes, 0);
        return {.reply = reply, .object = object, .offset = range.first, .length = length};
    } catch (const Refusal& refusal) {
        return {.reply = storageReply(head, refusal)};
    }
}

Download Platform::downloadUpdate(const RequestHead& head, const Fault& fault) const
{
    Download download;
    download.object = m_updates.image(head, download.reply);
    const qint64 missing = fault.kind == Fault::Kind::shortBody ? fault.bytes : 0;
    if (download.object)
        download.length = std::max<qint64>(download.object->size() - missing, 0);
    return download;
}

Reply Platform::refuseStorage(const RequestHead& head)
{
    std::lock_guard guard(m_lock);
    return storageReply(head, {.status = 405,
                               .error = QStringLiteral("MethodNotAllowed"),
                               .message = QStringLiteral("Storage knows PUT and GET."),
                               .violation = true});
}

void Platform::checkStorage(const RequestHead& head)
{
    checkStorageHeaders(head.headers, head.method);
    verifyTarget(head.method, head.target, m_wallNow());
}

Reply Platform::storageReply(const RequestHead& head, const Refusal& refusal)
{
    note(head, refusal);
    if (refusal.status == 400)
        return refusalReply(refusal);
    return storageRefusal(refusal.status, refusal.error.toLatin1(), refusal.message.toUtf8());
}

/// Without the query, which may hold a signature.
void Platform::note(const RequestHead& head, const Refusal& refusal)
{
    if (!refusal.violation)
        return;
    auto path = head.target.left(head.target.indexOf('?') < 0 ? head.target.size() : head.target.indexOf('?'));
    m_violations.append(QString::fromUtf8(head.method + ' ' + path + ": ") + refusal.message);
    if (m_onViolation)
        m_onViolation(m_violations.last());
}

QByteArray Platform::signIn(const QString& email)
{
    std::lock_guard guard(m_lock);
    auto cookie = m_signIn.open(email, m_wallNow());
    save();
    return cookie;
}

void Platform::expireSignIns()
{
    std::lock_guard guard(m_lock);
    m_signIn.expireAll();
    save();
}

QStringList Platform::violations() const
{
    std::lock_guard guard(m_lock);
    return m_violations;
}

void Platform::onViolation(std::function<void(const QString&)> told)
{
    std::lock_guard guard(m_lock);
    m_onViolation = std::move(told);
}

QJsonObject Platform::state() const
{
    std::lock_guard guard(m_lock);
    auto state = m_uploads.report();
    QJsonObject requests;
    for (const auto& [operation, count] : m_requests)
        requests[QString::fromLatin1(nameOf(operation))] = count;
    state[QStringLiteral("requests")] = requests;
    state[QStringLiteral("violations")] = QJsonArray::fromStringList(m_violations);
    return state;
}

void Platform::save()
{
    if (m_options.folder.isEmpty())
        return;
    m_stateFile.save({{QStringLiteral("sessions"), m_signIn.toJson()},
                      {QStringLiteral("passkeys"), m_signIn.passkeys().toJson()},
                      {QStringLiteral("uploads"), m_uploads.toJson()}});
}

} // namespace palvera::local
