#include "installer/Settings.h"

#include "installer/Built.h"

#include <algorithm>

namespace palvera::installer {

namespace {

const QString workerWord = QStringLiteral("--worker");
constexpr qsizetype workerWords = 4; // after that one
constexpr qsizetype keySize = 32;    // bytes

std::optional<Task> takeTask(QStringList& words)
{
    if (words.isEmpty() || words.first() != workerWord || words.size() <= workerWords)
        return std::nullopt;
    const bool prepares = words[1] == QLatin1StringView("prepare");
    if (!prepares && words[1] != QLatin1StringView("install"))
        return std::nullopt;
    const Task task{.kind = prepares ? Task::Kind::prepare : Task::Kind::install,
                    .target = words[2],
                    .announced = {.version = words[3], .build = words[4]}};
    words.remove(0, 1 + workerWords);
    return task;
}

bool readTime(const QString& value, std::chrono::milliseconds& into)
{
    bool isNumber = false;
    into = std::chrono::milliseconds(value.toInt(&isNumber));
    return isNumber && into.count() > 0;
}

/// False when there is no such setting, or the value does not fit.
bool take(const QString& name, const QString& value, Settings& settings)
{
    using namespace Qt::StringLiterals;
    if (name == "--root"_L1 || name == "--key"_L1)
        settings.forWorker << name << value;
    if (name == "--root"_L1) {
        settings.root = value;
        return value.startsWith(u'/');
    }
    if (name == "--key"_L1) {
        const auto keys = readKeys(value.toLatin1());
        settings.keys = keys.value_or(QList<PublicKey>());
        return keys.has_value();
    }
    if (name == "--bus"_L1) {
        settings.busAddress = value;
        return true;
    }
    if (name == "--idle"_L1)
        return readTime(value, settings.idle);
    const bool isFit = name == "--patience"_L1 && readTime(value, settings.patience);
    settings.patienceWithPeople = settings.patience;
    return isFit;
}

} // namespace

QStringList wordsOf(const Task& task)
{
    const auto kind = task.kind == Task::Kind::prepare ? QStringLiteral("prepare") : QStringLiteral("install");
    return {workerWord, kind, task.target, task.announced.version, task.announced.build};
}

std::optional<QList<PublicKey>> readKeys(const QByteArray& text)
{
    QList<PublicKey> keys;
    if (text.isEmpty())
        return keys;
    for (const auto& digits : text.split(';')) {
        const auto key = PublicKey::fromHex(digits);
        if (key.size() != keySize || key.toHex() != digits.toLower())
            return std::nullopt;
        keys << key;
    }
    return keys;
}

std::expected<Settings, QString> readSettings(QStringList words, bool isRoot, const QString& ownRoot)
{
    Settings settings{.root = ownRoot, .keys = readKeys(builtKeys).value_or(QList<PublicKey>())};
    settings.task = takeTask(words);
    if (isRoot && !words.isEmpty())
        return std::unexpected(QStringLiteral("takes no arguments when it is run by root"));
    while (!words.isEmpty()) {
        const auto name = words.takeFirst();
        if (name == QLatin1StringView("--session")) {
            settings.usesSessionBus = true;
            continue;
        }
        if (words.isEmpty() || !take(name, words.takeFirst(), settings))
            return std::unexpected(QStringLiteral("cannot use %1; it takes --session, and for tests --root FOLDER, "
                                                  "--key HEX, --bus ADDRESS, --patience MS and --idle MS")
                                       .arg(name));
    }
    return settings;
}

} // namespace palvera::installer
