#include "service/Organisations.h"

#include "service/JsonReader.h"
#include "service/OptionalHash.h"

namespace palvera {

QJsonObject Org::toJson() const
{
    QJsonObject object{{"id", id}, {"name", name}};
    json::put(object, "slug", slug);
    return object;
}

Org Org::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.id = reader.required<QString>("id"),
            .name = reader.required<QString>("name"),
            .slug = reader.optional<QString>("slug")};
}

std::size_t qHash(const Org& org, std::size_t seed) noexcept
{
    return qHashMulti(seed, org.id, org.name, hashOf(org.slug));
}

QJsonObject Project::toJson() const
{
    QJsonObject object{{"id", id}, {"name", name}};
    json::put(object, "reference", reference);
    json::put(object, "status", status);
    return object;
}

Project Project::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.id = reader.required<QString>("id"),
            .name = reader.required<QString>("name"),
            .reference = reader.optional<QString>("reference"),
            .status = reader.optional<QString>("status")};
}

std::size_t qHash(const Project& project, std::size_t seed) noexcept
{
    return qHashMulti(seed, project.id, project.name, hashOf(project.reference), hashOf(project.status));
}

Orgs Orgs::fromJson(const QJsonObject& object)
{
    return {.orgs = JsonReader(object).required<QList<Org>>("orgs")};
}

Projects Projects::fromJson(const QJsonObject& object)
{
    return {.projects = JsonReader(object).required<QList<Project>>("projects")};
}

} // namespace palvera
