#include "service/BrowsingOperations.h"

#include "service/API.h"

#include <QStringList>

namespace palvera {

namespace {

QString orgPath(const QString& org)
{
    return "orgs/" + pathSegment(org);
}

QString deliverablesPath(const QString& org, const QString& project)
{
    return orgPath(org) + "/projects/" + pathSegment(project) + "/deliverables";
}

/// Adds the item `name`, unless there is nothing to ask for.
void addText(QStringList& items, const QString& name, const std::optional<QString>& value)
{
    if (value && !value->isEmpty())
        items.append(name + u'=' + queryValue(*value));
}

} // namespace

Task<QList<Org>> listOrgs(API& api)
{
    const QString path = "orgs";
    Orgs answer = co_await api.fetch<Orgs>(path);
    co_return std::move(answer.orgs);
}

Task<QList<Project>> listProjects(API& api, QString org)
{
    const QString path = orgPath(org) + "/projects";
    Projects answer = co_await api.fetch<Projects>(path);
    co_return std::move(answer.projects);
}

Task<QList<Deliverable>> listDeliverables(API& api, QString org, QString project)
{
    const QString path = deliverablesPath(org, project);
    Deliverables answer = co_await api.fetch<Deliverables>(path);
    co_return std::move(answer.deliverables);
}

Task<OrgAssetsPage> listAssetFiles(API& api, const QString& org, const AssetQuery& query)
{
    QStringList items{"page=" + QString::number(query.page), "pageSize=" + QString::number(query.pageSize),
                      "sort=newest"};
    addText(items, "q", query.search);
    addText(items, "family", query.family);
    return api.fetch<OrgAssetsPage>(orgPath(org) + "/assets/files?" + items.join(u'&'));
}

Task<BinPage> listBin(API& api, const QString& org, const BinQuery& query)
{
    QStringList items{"limit=" + QString::number(query.limit)};
    addText(items, "prefix", query.prefix);
    addText(items, "q", query.search);
    addText(items, "cursor", query.cursor);
    return api.fetch<BinPage>(orgPath(org) + "/bin?" + items.join(u'&'));
}

Task<BinDownload> binDownloadURL(API& api, QString org, QString key)
{
    const QString path = orgPath(org) + "/bin/download?key=" + queryValue(key);
    auto answer = co_await api.fetch<BinDownload>(path);
    api.requireEncryption(answer.url);
    co_return answer;
}

Task<QString> assetURL(API& api, QString org, QString project, QString deliverable, QString object)
{
    const QString path =
        deliverablesPath(org, project) + u'/' + pathSegment(deliverable) + "/asset-url?object=" + queryValue(object);
    SignedURL answer = co_await api.fetch<SignedURL>(path);
    api.requireEncryption(answer.url);
    co_return std::move(answer.url);
}

} // namespace palvera
