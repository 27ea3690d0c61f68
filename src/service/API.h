#pragma once

#include "async/RunOn.h"
#include "http/HttpClient.h"
#include "service/APIError.h"
#include "service/Addresses.h"
#include "service/JsonReader.h"
#include "service/Site.h"

#include <QJsonObject>

#include <atomic>
#include <mutex>

namespace palvera {

class NetworkPath;

/// The client of the platform's JSON service: every call to it goes through here.
///
/// Operations may be called from any executor. They run on a strand of the API's own, so no answer is ever decoded on
/// the main thread, and they interleave while they wait, so requests overlap on the wire. Cancelling one cuts its
/// request off; it ends with a cancellation. Nothing is retried.
class API {
public:
    /// What an API works with.
    struct Surroundings {
        HttpClient& client;                          ///< must outlive the API
        Executor executor;                           ///< the API makes its strand of it
        Site site = Site::qa;                        ///< whose service is called to begin with
        std::function<void()> clearCookies;          ///< empties the cookie store of `client`; called on the strand
        std::function<QString()> cookieProblem = {}; ///< as CookieStore::problem; any thread
    };

    explicit API(Surroundings surroundings);

    /// Whose service is called. Any thread; a change counts from the next request on.
    Site site() const { return m_shared->site; }
    void setSite(Site site) { m_shared->site = site; }
    /// A client of the service that is called at this moment, which keeps to that address whatever becomes of the site
    /// and of PV_API. It may outlive this one.
    std::shared_ptr<API> pinned() const;
    /// Has `call` called, on any thread, whenever this client or one that was pinned meets a refusal, at the address
    /// that this one calls, because nobody is signed in; not for the calls that ask who is, or that sign in. Nothing
    /// ends that, and returns once no call is under way. Any thread.
    void onSignInNeeded(std::function<void()> call);
    /// Why the sign-in will not be there at the next start, for the user; empty when it will, or nobody is signed in.
    QString signInProblem() const;

    /// The service address that requests go to: that in the environment variable PV_API, which is read anew at each
    /// call and ignored unless it is an absolute http or https address; else the site's own.
    Address serviceBase() const;
    /// Whether PV_API names the service.
    bool isServiceNamed() const;
    /// Why what PV_API holds is ignored, for the user; empty when it is not.
    QString serviceProblem() const;
    /// Whether a question would not only wait for `path` to become usable.
    bool canBeAsked(const NetworkPath& path) const;
    /// Whether what goes to the service can be read on the way: only where PV_API says so.
    bool isServiceExposed() const;
    /// Throws TransportError where the service is encrypted and `address`, which it gave for storage, is not: a master
    /// must not go in clear because somebody set the platform up wrongly.
    void requireEncryption(const QString& address) const;
    /// The platform's sign-in page for a browser.
    QByteArray signInPageURL() const;
    /// The address of `path`, which is relative to the service address and may carry an encoded query. Identifiers in
    /// it must have gone through `pathSegment` and values in the query through `queryValue`.
    QByteArray makeURL(const QString& path) const;

    /// Calls the service and gives the body of its answer. Throws APIError for a status outside 200 to 299; transport
    /// failures pass through.
    Task<QByteArray> send(QString path, QByteArray method, std::optional<QJsonObject> body = {});
    /// As `send`, and decodes the answer as a `Record`. Throws DecodingError when it is not one, in words for the user.
    template <JsonRecord Record>
    Task<Record> fetch(QString path, QByteArray method = "GET", std::optional<QJsonObject> body = {})
    {
        return runOn(m_strand, fetchHere<Record>(std::move(path), std::move(method), std::move(body)));
    }
    /// Posts to the service and ignores the body of its answer. Throws as `send` does.
    Task<void> post(QString path, std::optional<QJsonObject> body = {});

    /// Signs out: every cookie of every host is forgotten at once, and the platform, which is told, gets five seconds
    /// to answer. A sign-in that is made meanwhile stays. Gives whether it has answered well. Never fails.
    Task<bool> signOut();

private:
    /// What a client and those that were pinned have in common.
    struct Shared {
        std::atomic<Site> site;
        std::mutex mutex;
        std::function<void()> signInNeeded; ///< guarded by `mutex`
    };

    API(const API& other, Address pinned);
    Address chosenBase() const;
    void noteRefusal(const QString& path, const APIError& refusal) const;

    // These run on the strand.
    Task<QByteArray> sendHere(QString path, QByteArray method, std::optional<QJsonObject> body);
    template <JsonRecord Record>
    Task<Record> fetchHere(QString path, QByteArray method, std::optional<QJsonObject> body)
    {
        const QByteArray answer = co_await sendHere(std::move(path), std::move(method), std::move(body));
        try {
            co_return Record::fromJson(json::parseObject(answer));
        } catch (const DecodingError& error) {
            throw inWords(error);
        }
    }
    static DecodingError inWords(const DecodingError& error);
    Task<void> postHere(QString path, std::optional<QJsonObject> body);
    Task<bool> signOutHere();

    HttpClient& m_client;
    const Executor m_strand;
    const std::function<void()> m_clearCookies;
    const std::function<QString()> m_cookieProblem;
    const std::shared_ptr<Shared> m_shared;
    const std::optional<Address> m_pinned;
};

} // namespace palvera
