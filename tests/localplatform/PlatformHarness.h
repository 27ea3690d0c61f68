#pragma once

#include "localplatform/Catalogue.h"
#include "localplatform/Platform.h"
#include "localplatform/SignedAddresses.h"

#include <QJsonArray>

#include <gmock/gmock.h>

namespace palvera::local {

inline const QByteArray row = "/api/orgs/org-northlight/projects/long-tide/deliverables/long-tide-row-5";
inline const QByteArray film = "0123456789abcdefghijABC"; // three parts of ten bytes at most

inline const QByteArray startBody = R"({"filename":"a.mov","contentType":"video/quicktime","byteSize":23})";
inline const std::pair<QByteArray, QByteArray> accept{"Accept", "application/json"};

/// `text` with one thing put in another's place.
inline QByteArray with(QByteArray text, const QByteArray& was, const QByteArray& is)
{
    return text.replace(was, is);
}

/// The two members of a body that name the upload started as the `serial`-th, from 1.
inline QByteArray upload(int serial)
{
    const auto number = QByteArray::number(serial);
    return R"("object":"deliveries/org-northlight/long-tide/long-tide-row-5/2026-01-01-)" + number +
           R"(/a.mov","uploadId":"up/)" + number + "+==\"";
}

/// The body of a completion.
inline QByteArray completion(int serial, const QByteArrayList& parts)
{
    return '{' + upload(serial) + ",\"parts\":[" + parts.join(',') + "]}";
}

/// A platform, and requests as a proper client makes them where a test does not say otherwise.
struct PlatformHarness {
    explicit PlatformHarness(PlatformOptions options = {.partSize = 10})
        : platform(std::move(options), [this] { return now; })
    {}

    Clock::WallTime now{std::chrono::seconds(1'767'268'800)}; // 2026-01-01
    Platform platform;
    QByteArray cookie = platform.signIn("ada@northlight.example");

    /// `line` is a method and a target. `headers` stand in the place of a proper client's where there are any.
    Reply ask(const QByteArray& line, const QByteArray& body = {}, HttpHeaders headers = {})
    {
        const auto space = line.indexOf(' ');
        const auto method = line.left(space), target = line.mid(space + 1);
        const bool isCall = !target.startsWith("/vault");
        if (isCall && headers.isEmpty()) {
            headers = {accept, {"Cookie", cookie}};
            if (!body.isEmpty())
                headers.emplaceBack("Content-Type", "application/json");
        }
        const RequestHead head{.method = method, .target = target, .headers = headers};
        const auto fault = platform.meet(head);
        if (isCall)
            return platform.serve(head, body, fault);
        if (method == "PUT") {
            auto opening = platform.openPart(head, body.size(), fault);
            if (opening.receiver)
                opening.receiver->write(std::span(body));
            return opening.receiver ? opening.receiver->finish(fault) : opening.refusal;
        }
        if (method != "GET")
            return platform.refuseStorage(head);
        auto [reply, object, offset, length] = platform.download(head, fault);
        reply.body.resize(object ? length : reply.body.size());
        if (object)
            object->read(offset, std::span(reply.body.data(), static_cast<std::size_t>(length)));
        return reply;
    }

    void start(const QByteArray& byteSize = "23")
    {
        ask("POST " + row + "/transfer/start", with(startBody, "23", byteSize));
    }
    QByteArray partTarget(int serial, int part) const
    {
        return local::partTarget({.serial = serial, .part = part}, "a.mov", now + std::chrono::minutes(15));
    }
    /// Of an object that is 165537 bytes long.
    QByteArray sampleTarget() const
    {
        const auto key = binStorageKey("org-northlight", "Reel 002 of 230.mov");
        return objectTarget({.key = key}, now + std::chrono::minutes(15));
    }
    /// Sends a part of the film and gives what a completion says of it.
    QByteArray send(int serial, int part)
    {
        const auto stored = ask("PUT " + partTarget(serial, part), film.mid(qsizetype{10} * (part - 1), 10));
        return "{\"partNumber\":" + QByteArray::number(part) + ",\"etag\":" + headerOf(stored.headers, "ETag") + '}';
    }
    /// What there is to say of the upload that was started last.
    QJsonObject report() const { return platform.state()["uploads"].toArray().last().toObject(); }
    int partsStored() const { return static_cast<int>(report()["parts"].toObject().size()); }
};

} // namespace palvera::local
