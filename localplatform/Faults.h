#pragma once

#include "localplatform/Operation.h"
#include "localplatform/Wire.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <random>
#include <vector>

namespace palvera::local {

/// What goes wrong with one request.
struct Fault {
    enum class Kind {
        none,
        status,             ///< answered with `status` and `answer`, without acting
        refuse,             ///< nobody listens (a server that does listen cuts the connection instead)
        resetBeforeReading, ///< cut before a byte of the body is read
        resetMidBody,       ///< cut after `bytes` of the body: of the request's, or of a download's
        stallMidBody,       ///< the same, but the connection stays and nothing moves
        stallAfterBody,     ///< the whole body is read, nothing is done, and no answer comes
        loseAnswer,         ///< done as asked, then cut without an answer
        noTag,              ///< a part's answer without its tag
        lowerCaseTag,       ///< the tag under "etag"
        capitalTag,         ///< the tag under "Etag"
        bareTag,            ///< the tag without its quotes
        expired,            ///< the address is refused as too old
        unsignedPart,       ///< part `part` is left out of the signed addresses
        html,               ///< status 200 and a web page
        truncated,          ///< the right answer, cut in half
        overwrite,          ///< the right answer with `members` put over its own
        shortBody,          ///< a download lacks its last `bytes` bytes, and its length says so
        wrongRange,         ///< a download's Content-Range names another range
        ignoreRange,        ///< a download is answered whole, with 200
        otherTag,           ///< a download's tag is another object's
    };
    enum class Answer { json, html, empty };

    Kind kind = Kind::none;
    int status = 503;
    Answer answer = Answer::json;
    QString error = QStringLiteral("fault");
    QString message = QStringLiteral("The platform is having trouble.");
    qint64 bytes = 0;
    int part = 0; ///< counts from 1
    QJsonObject members = {};
    std::chrono::milliseconds latency{0}; ///< more time before the answer, whatever the kind
    qint64 bytesPerSecond = 0;            ///< the most that storage moves of the body, whatever the kind; 0 is no limit

    /// Whether the platform does what it was asked.
    bool acts() const;
};

/// Which requests a fault meets: those of `operation` (any when absent) and `part` (any when absent), after the first
/// `after` of them, every `every`-th, at most `times` times (0 is for ever), each with the probability `chance`.
struct FaultRule {
    std::optional<Operation> operation = {};
    std::optional<int> part = {};
    int after = 0;
    int times = 1;
    int every = 1;
    double chance = 1;
    unsigned seed = 1;
    Fault fault = {};
};

/// The faults to come. Any thread.
class FaultScript {
public:
    void add(FaultRule rule);
    /// Puts `rules` in the place of all others; counting starts anew.
    void replace(std::vector<FaultRule> rules);
    void clear() { replace({}); }

    /// What goes wrong with the request that has come: the first rule that fires says what, and the latencies of all
    /// that fire add up. Counts the request.
    Fault meet(Operation operation, std::optional<int> part);

private:
    struct Counted {
        FaultRule rule;
        std::minstd_rand chance;
        int met = 0;
        int fired = 0;
    };

    static bool fires(Counted& counted);

    std::mutex m_lock;
    std::vector<Counted> m_rules; // guarded by m_lock
};

/// `reply` as `fault` spoils it, for faults that touch what is in an answer.
Reply spoil(Reply reply, const Fault& fault);

} // namespace palvera::local
