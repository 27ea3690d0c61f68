#include "localplatform/FaultFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <iostream>
#include <stdexcept>

namespace palvera::local {

namespace {

constexpr std::pair<const char*, Fault::Kind> actions[] = {
    {"none", Fault::Kind::none},
    {"status", Fault::Kind::status},
    {"refuse", Fault::Kind::refuse},
    {"reset-before-reading", Fault::Kind::resetBeforeReading},
    {"reset-mid-body", Fault::Kind::resetMidBody},
    {"stall-mid-body", Fault::Kind::stallMidBody},
    {"stall-after-body", Fault::Kind::stallAfterBody},
    {"lose-answer", Fault::Kind::loseAnswer},
    {"no-tag", Fault::Kind::noTag},
    {"lower-case-tag", Fault::Kind::lowerCaseTag},
    {"capital-tag", Fault::Kind::capitalTag},
    {"bare-tag", Fault::Kind::bareTag},
    {"expired", Fault::Kind::expired},
    {"unsigned-part", Fault::Kind::unsignedPart},
    {"html", Fault::Kind::html},
    {"truncated", Fault::Kind::truncated},
    {"overwrite", Fault::Kind::overwrite},
    {"short-body", Fault::Kind::shortBody},
    {"wrong-range", Fault::Kind::wrongRange},
    {"ignore-range", Fault::Kind::ignoreRange},
    {"other-tag", Fault::Kind::otherTag},
};
constexpr std::pair<const char*, Fault::Answer> answers[] = {
    {"json", Fault::Answer::json},
    {"html", Fault::Answer::html},
    {"empty", Fault::Answer::empty},
};

[[noreturn]] void wrong(const QString& what)
{
    throw std::runtime_error(what.toStdString());
}

template <class Value, std::size_t count>
Value named(const std::pair<const char*, Value> (&all)[count], const QString& name, const QString& key)
{
    for (const auto& [known, value] : all)
        if (name == QLatin1String(known))
            return value;
    wrong(QStringLiteral("\"%1\" is no %2").arg(name, key));
}

Operation operationFrom(const QString& name)
{
    if (auto operation = operationNamed(name))
        return *operation;
    wrong(QStringLiteral("\"%1\" is no operation").arg(name));
}

qint64 countFrom(const QJsonValue& value, const QString& key)
{
    auto count = value.toInteger(-1);
    if (count < 0)
        wrong(QStringLiteral("\"%1\" is not a number from 0").arg(key));
    return count;
}

/// Reads one member of a rule; false when rules have no such member.
bool readMember(FaultRule& rule, const QString& key, const QJsonValue& value)
{
    auto is = [&](const char* name) { return key == QLatin1String(name); };
    auto count = [&] { return static_cast<int>(countFrom(value, key)); };
    auto& fault = rule.fault;
    if (is("operation"))
        rule.operation = operationFrom(value.toString());
    else if (is("part"))
        rule.part = count();
    else if (is("after"))
        rule.after = count();
    else if (is("times"))
        rule.times = count();
    else if (is("every"))
        rule.every = count();
    else if (is("chance"))
        rule.chance = value.toDouble();
    else if (is("seed"))
        rule.seed = static_cast<unsigned>(count());
    else if (is("action"))
        fault.kind = named(actions, value.toString(), key);
    else if (is("status"))
        fault.status = count();
    else if (is("answer"))
        fault.answer = named(answers, value.toString(), key);
    else if (is("error"))
        fault.error = value.toString();
    else if (is("message"))
        fault.message = value.toString();
    else if (is("bytes"))
        fault.bytes = countFrom(value, key);
    else if (is("leaveOut"))
        fault.part = count();
    else if (is("members"))
        fault.members = value.toObject();
    else if (is("latencyMs"))
        fault.latency = std::chrono::milliseconds(countFrom(value, key));
    else if (is("bytesPerSecond"))
        fault.bytesPerSecond = countFrom(value, key);
    else
        return false;
    return true;
}

FaultRule readRule(const QJsonObject& json)
{
    FaultRule rule;
    for (auto it = json.begin(); it != json.end(); ++it)
        if (!readMember(rule, it.key(), it.value()))
            wrong(QStringLiteral("\"%1\" does not belong into a rule").arg(it.key()));
    return rule;
}

} // namespace

std::vector<FaultRule> readFaultRules(const QByteArray& json)
{
    QJsonParseError failure;
    auto document = QJsonDocument::fromJson(json, &failure);
    if (failure.error != QJsonParseError::NoError)
        wrong(failure.errorString());
    if (!document[QStringLiteral("rules")].isArray() || document.object().size() != 1)
        wrong(QStringLiteral("not an object with \"rules\" and nothing else"));
    std::vector<FaultRule> rules;
    for (const auto& rule : document[QStringLiteral("rules")].toArray())
        rules.push_back(readRule(rule.toObject()));
    return rules;
}

FaultFile::FaultFile(std::filesystem::path path, FaultScript& script) : m_path(std::move(path)), m_script(script)
{
    read();
}

void FaultFile::read()
{
    m_changed = std::filesystem::last_write_time(m_path);
    QFile file(QString::fromStdString(m_path.string()));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + m_path.string());
    m_script.replace(readFaultRules(file.readAll()));
}

void FaultFile::refresh()
{
    std::lock_guard guard(m_lock);
    std::error_code problem;
    auto changed = std::filesystem::last_write_time(m_path, problem);
    if (problem || changed == m_changed)
        return;
    try {
        read();
    } catch (const std::exception& failure) {
        std::cerr << m_path.string() << ": " << failure.what() << std::endl;
    }
}

} // namespace palvera::local
