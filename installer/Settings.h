#pragma once

#include "installer/Installer.h"

#include <QStringList>

#include <chrono>
#include <expected>
#include <optional>

namespace palvera::installer {

/// What a worker is to do.
struct Task {
    enum class Kind { prepare, install };

    Kind kind = Kind::install;
    QString target;
    Announced announced = {};
};

/// The words of a worker's command line that stand for `task`.
QStringList wordsOf(const Task& task);

/// What the program is told by its command line.
struct Settings {
    bool usesSessionBus = false;
    QString busAddress; // instead of either bus
    QString root;
    QList<PublicKey> keys;
    std::chrono::milliseconds patience{std::chrono::seconds(120)};          // with one worker
    std::chrono::milliseconds patienceWithPeople{std::chrono::minutes(10)}; // who may have to find a password
    std::chrono::milliseconds idle{std::chrono::seconds(60)};               // without a job, then the service leaves
    std::optional<Task> task;                                               // of a worker; the service has none
    QStringList forWorker;                                                  // what a worker is told of this
};

/// `words` are those after the program's name, `ownRoot` the root of the copy that it belongs to. Gives what is wrong
/// with them instead. Root is told nothing but a worker's task: nobody may lead it to another place or key.
std::expected<Settings, QString> readSettings(QStringList words, bool isRoot, const QString& ownRoot);

/// Public keys in hexadecimal, apart by semicolons; nothing when one is no key.
std::optional<QList<PublicKey>> readKeys(const QByteArray& text);

} // namespace palvera::installer
