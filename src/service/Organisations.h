#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace palvera {

/// An organisation that shares work with the user; the screens call it a client. Identified by `id`.
struct Org {
    QString id;
    QString name;
    std::optional<QString> slug = {};

    QJsonObject toJson() const;
    static Org fromJson(const QJsonObject& object);
    bool operator==(const Org&) const = default;
    friend std::size_t qHash(const Org& org, std::size_t seed) noexcept;
};

/// Identified by `id`.
struct Project {
    QString id;
    QString name;
    std::optional<QString> reference = {};
    std::optional<QString> status = {};

    QJsonObject toJson() const;
    static Project fromJson(const QJsonObject& object);
    bool operator==(const Project&) const = default;
    friend std::size_t qHash(const Project& project, std::size_t seed) noexcept;
};

struct Orgs {
    QList<Org> orgs;

    static Orgs fromJson(const QJsonObject& object);
    bool operator==(const Orgs&) const = default;
};

struct Projects {
    QList<Project> projects;

    static Projects fromJson(const QJsonObject& object);
    bool operator==(const Projects&) const = default;
};

} // namespace palvera
