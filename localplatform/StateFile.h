#pragma once

#include <QJsonObject>
#include <QString>

namespace palvera::local {

/// The platform's memory between runs: one JSON file, replaced in one step. One thread at a time.
class StateFile {
public:
    /// Keeps `folder`/state.json; keeps nothing when `folder` is empty.
    explicit StateFile(const QString& folder) : m_folder(folder) {}

    /// What the last run saved; empty when there is nothing.
    QJsonObject load() const;
    /// Throws when the file cannot be written.
    void save(const QJsonObject& state) const;

private:
    QString m_folder;
};

} // namespace palvera::local
