#include "localplatform/Faults.h"

#include <QJsonDocument>

namespace palvera::local {

namespace {

const QByteArray troublePage = "<!DOCTYPE html><html><body><h1>Something is in the way</h1></body></html>";

Reply statusReply(const Fault& fault)
{
    switch (fault.answer) {
    case Fault::Answer::json:
        return refusalReply({.status = fault.status, .error = fault.error, .message = fault.message});
    case Fault::Answer::html:
        return htmlReply(troublePage, fault.status);
    case Fault::Answer::empty:
        break;
    }
    return {.status = fault.status};
}

QByteArray overwritten(const QByteArray& body, const QJsonObject& members)
{
    auto object = QJsonDocument::fromJson(body).object();
    for (auto it = members.begin(); it != members.end(); ++it)
        object[it.key()] = it.value();
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

bool isTag(const std::pair<QByteArray, QByteArray>& header)
{
    return header.first == "ETag";
}

void renameTag(HttpHeaders& headers, const QByteArray& name)
{
    for (auto& header : headers)
        if (isTag(header))
            header.first = name;
}

void bareTag(HttpHeaders& headers)
{
    for (auto& header : headers)
        if (isTag(header))
            header.second.replace('"', "");
}

} // namespace

bool Fault::acts() const
{
    switch (kind) {
    case Kind::status:
    case Kind::refuse:
    case Kind::resetBeforeReading:
    case Kind::stallAfterBody:
    case Kind::expired:
    case Kind::html:
        return false;
    case Kind::none:
    case Kind::resetMidBody:
    case Kind::stallMidBody:
    case Kind::loseAnswer:
    case Kind::noTag:
    case Kind::lowerCaseTag:
    case Kind::capitalTag:
    case Kind::bareTag:
    case Kind::unsignedPart:
    case Kind::truncated:
    case Kind::overwrite:
    case Kind::shortBody:
    case Kind::wrongRange:
    case Kind::ignoreRange:
    case Kind::otherTag:
        break;
    }
    return true;
}

void FaultScript::add(FaultRule rule)
{
    std::lock_guard guard(m_lock);
    auto seed = rule.seed;
    m_rules.push_back({.rule = std::move(rule), .chance = std::minstd_rand(seed)});
}

void FaultScript::replace(std::vector<FaultRule> rules)
{
    {
        std::lock_guard guard(m_lock);
        m_rules.clear();
    }
    for (auto& rule : rules)
        add(std::move(rule));
}

bool FaultScript::fires(Counted& counted)
{
    const auto& rule = counted.rule;
    int beyond = ++counted.met - rule.after;
    if (beyond < 1 || (beyond - 1) % std::max(rule.every, 1) != 0 || (rule.times > 0 && counted.fired >= rule.times))
        return false;
    if (rule.chance < 1 && std::uniform_real_distribution<>()(counted.chance) >= rule.chance)
        return false;
    ++counted.fired;
    return true;
}

Fault FaultScript::meet(Operation operation, std::optional<int> part)
{
    std::lock_guard guard(m_lock);
    Fault fault;
    std::chrono::milliseconds latency{0};
    for (auto& counted : m_rules) {
        const auto& rule = counted.rule;
        if ((rule.operation && rule.operation != operation) || (rule.part && rule.part != part) || !fires(counted))
            continue;
        latency += rule.fault.latency;
        if (fault.kind == Fault::Kind::none)
            fault = rule.fault;
    }
    fault.latency = latency;
    return fault;
}

Reply spoil(Reply reply, const Fault& fault)
{
    switch (fault.kind) {
    case Fault::Kind::status:
        return statusReply(fault);
    case Fault::Kind::html:
        return htmlReply(troublePage);
    case Fault::Kind::expired:
        return storageRefusal(403, "AccessDenied", "Request has expired");
    case Fault::Kind::noTag:
        reply.headers.removeIf(isTag);
        break;
    case Fault::Kind::lowerCaseTag:
        renameTag(reply.headers, "etag");
        break;
    case Fault::Kind::capitalTag:
        renameTag(reply.headers, "Etag");
        break;
    case Fault::Kind::bareTag:
        bareTag(reply.headers);
        break;
    case Fault::Kind::truncated:
        reply.body.truncate(reply.body.size() / 2);
        break;
    case Fault::Kind::overwrite:
        reply.body = overwritten(reply.body, fault.members);
        break;
    case Fault::Kind::none:
    case Fault::Kind::refuse:
    case Fault::Kind::resetBeforeReading:
    case Fault::Kind::resetMidBody:
    case Fault::Kind::stallMidBody:
    case Fault::Kind::stallAfterBody:
    case Fault::Kind::loseAnswer:
    case Fault::Kind::unsignedPart:
    case Fault::Kind::shortBody:
    case Fault::Kind::wrongRange:
    case Fault::Kind::ignoreRange:
    case Fault::Kind::otherTag:
        break;
    }
    return reply;
}

} // namespace palvera::local
