#pragma once

#include "localplatform/Escapes.h"
#include "localplatform/Platform.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <vector>

namespace palvera::local {

/// An answer with its body as JSON.
struct JsonAnswer {
    int status = 0;
    QJsonObject json;

    QString text(const char* key) const { return json[QLatin1String(key)].toString(); }
};

/// A platform and the requests of a proper client, on a wall clock that the test moves.
class PlatformHarness {
public:
    explicit PlatformHarness(PlatformOptions options = {.partSize = 10})
        : platform(std::move(options), [this] { return now; })
    {
        cookie = platform.signIn(QStringLiteral("ada@northlight.example"));
    }

    Clock::WallTime now{std::chrono::seconds(1'767'268'800)};
    Platform platform;
    QByteArray cookie;

    HttpHeaders serviceHeaders(const QByteArray& body) const
    {
        HttpHeaders headers{{"Host", "platform.test"}, {"Accept", "application/json"}};
        if (!cookie.isEmpty())
            headers.emplaceBack("Cookie", cookie);
        if (!body.isNull())
            headers.emplaceBack("Content-Type", "application/json");
        return headers;
    }

    Reply ask(const RequestHead& head, const QByteArray& body = {})
    {
        return platform.serve(head, body, platform.meet(head));
    }

    JsonAnswer call(const QByteArray& method, const QByteArray& path, const QByteArray& body = {})
    {
        auto reply = ask({.method = method, .target = "/api/" + path, .headers = serviceHeaders(body)}, body);
        return {.status = reply.status, .json = QJsonDocument::fromJson(reply.body).object()};
    }

    JsonAnswer get(const QByteArray& path) { return call("GET", path); }
    JsonAnswer post(const QByteArray& path, const QJsonObject& body)
    {
        return call("POST", path, QJsonDocument(body).toJson(QJsonDocument::Compact));
    }

    static QByteArray targetOf(const QString& url) { return url.mid(url.indexOf(u'/', 8)).toLatin1(); }

    /// Sends a part whole.
    Reply put(const QString& url, const QByteArray& bytes)
    {
        RequestHead head{.method = "PUT", .target = targetOf(url)};
        auto fault = platform.meet(head);
        auto opening = platform.openPart(head, bytes.size(), fault);
        if (!opening.receiver)
            return opening.refusal;
        opening.receiver->write({bytes.data(), static_cast<std::size_t>(bytes.size())});
        return opening.receiver->finish(fault);
    }

    Download download(const QString& url, const QByteArray& range = {})
    {
        RequestHead head{.method = "GET", .target = targetOf(url)};
        if (!range.isEmpty())
            head.headers.emplaceBack("Range", range);
        return platform.download(head, platform.meet(head));
    }

    static QByteArray bytesOf(const Download& download)
    {
        QByteArray bytes(download.length, '\0');
        download.object->read(download.offset, {bytes.data(), static_cast<std::size_t>(bytes.size())});
        return bytes;
    }
};

/// One upload through the calls of a proper client, a step at a time. `base` is what the paths of its calls begin with.
class UploadSteps {
public:
    UploadSteps(PlatformHarness& harness, QByteArray startPath, const QString& filename, QByteArray bytes)
        : m_harness(harness), m_startPath(std::move(startPath)), m_filename(filename), m_bytes(std::move(bytes))
    {}

    JsonAnswer start(QJsonObject more = {})
    {
        more[QStringLiteral("filename")] = m_filename;
        more[QStringLiteral("contentType")] = QStringLiteral("video/quicktime");
        more[QStringLiteral("byteSize")] = m_bytes.size();
        auto answer = m_harness.post(m_startPath, more);
        object = answer.text("object");
        uploadId = answer.text("uploadId");
        partSize = answer.json[QStringLiteral("partSize")].toInteger();
        partCount = answer.json[QStringLiteral("partCount")].toInt();
        return answer;
    }

    QJsonObject identity() const
    {
        return {{QStringLiteral("object"), object}, {QStringLiteral("uploadId"), uploadId}};
    }

    JsonAnswer sign(int from, int to) const
    {
        auto body = identity();
        body[QStringLiteral("from")] = from;
        body[QStringLiteral("to")] = to;
        return m_harness.post(base + "/parts", body);
    }

    QString urlOf(int part) const
    {
        return sign(part, part).json[QStringLiteral("urls")][0][QStringLiteral("url")].toString();
    }

    QByteArray bytesOf(int part) const { return m_bytes.mid((part - 1) * partSize, partSize); }

    Reply send(int part)
    {
        auto reply = m_harness.put(urlOf(part), bytesOf(part));
        tags[part] = headerOf(reply.headers, "ETag").replace('"', "");
        return reply;
    }

    void sendAll()
    {
        for (int part = 1; part <= partCount; ++part)
            send(part);
    }

    JsonAnswer complete() const
    {
        QJsonArray parts;
        for (const auto& [part, tag] : tags)
            parts.append(
                QJsonObject{{QStringLiteral("partNumber"), part}, {QStringLiteral("etag"), QString::fromLatin1(tag)}});
        auto body = identity();
        body[QStringLiteral("parts")] = parts;
        return m_harness.post(base + "/complete", body);
    }

    JsonAnswer abort() const { return m_harness.post(base + "/abort", identity()); }

    JsonAnswer file(const QByteArray& row) const
    {
        return m_harness.post(row + "/asset",
                              {{QStringLiteral("object"), object}, {QStringLiteral("filename"), m_filename}});
    }

    QByteArray base;
    QString object;
    QString uploadId;
    qint64 partSize = 0;
    int partCount = 0;
    std::map<int, QByteArray> tags;

private:
    PlatformHarness& m_harness;
    QByteArray m_startPath;
    QString m_filename;
    QByteArray m_bytes;
};

inline const QByteArray sampleRow = "orgs/org-northlight/projects/long-tide/deliverables/long-tide-row-5";

inline UploadSteps rowUpload(PlatformHarness& harness, const QString& filename, const QByteArray& bytes,
                             const QByteArray& row = sampleRow)
{
    UploadSteps steps(harness, row + "/transfer/start", filename, bytes);
    steps.base = row + "/transfer";
    return steps;
}

/// The reports of violations so far, for a message.
inline std::string violationsOf(const PlatformHarness& harness)
{
    return harness.platform.violations().join(u'\n').toStdString();
}

} // namespace palvera::local
