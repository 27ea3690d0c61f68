#pragma once

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace palvera {

/// One row of what a project must deliver. Identified by `id`.
///
/// The platform's rows carry loosely typed metadata, so all but `id` is read leniently: what is missing or of another
/// type is left empty.
struct Deliverable {
    QString id;
    QString family = {};
    QString kind = {};
    QString label = {};
    QString status = {};
    std::optional<QString> language = {};
    std::optional<QString> territory = {};
    std::optional<QString> purpose = {};
    std::optional<QString> titleName = {};
    std::optional<QString> episodeCode = {};
    std::optional<QString> showName = {};
    std::optional<QString> level = {};
    std::optional<qint64> seasonNumber = {};
    std::optional<qint64> episodeNumber = {};
    std::optional<QMap<QString, QString>> spec = {}; ///< the texts of the row's specification; other values left out

    /// The title line of the row: the show, the place in it and the title, as far as they are known.
    std::optional<QString> contextLine() const;
    /// The storage key of the file that is filed on it; empty when none is.
    QString assetObject() const;
    /// The size in bytes that the platform lists for that file, where it lists one.
    std::optional<qint64> expectedBytes() const;

    QJsonObject toJson() const;
    static Deliverable fromJson(const QJsonObject& object);
    bool operator==(const Deliverable&) const = default;
    friend std::size_t qHash(const Deliverable& deliverable, std::size_t seed) noexcept;
};

struct Deliverables {
    QList<Deliverable> deliverables;

    static Deliverables fromJson(const QJsonObject& object);
    bool operator==(const Deliverables&) const = default;
};

} // namespace palvera
