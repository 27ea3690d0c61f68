#include "app/ProjectRows.h"

#include "text/TextOrder.h"
#include "text/VisibleText.h"

#include <QCoreApplication>

namespace palvera {

namespace {

bool matches(const Project& project, const QString& query)
{
    return project.name.toLower().contains(query) || project.reference.value_or(QString()).toLower().contains(query);
}

QList<ProjectRow> sorted(const QList<ProjectRow>& rows)
{
    QStringList titles;
    for (const auto& row : rows)
        titles.append(row.title);
    QList<ProjectRow> inOrder;
    for (const auto at : textOrder(titles))
        inOrder.append(rows[at]);
    return inOrder;
}

} // namespace

QList<ProjectRow> projectRows(const QList<Project>& projects, const QString& search, ProjectOrder order)
{
    const auto query = search.trimmed().toLower();
    QList<ProjectRow> rows, found;
    if (QStringLiteral("assets").contains(query))
        rows.append({.title = QCoreApplication::translate("ProjectsView", "Assets"),
                     .subtitle = QCoreApplication::translate("ProjectsView", "Master assets, for any project"),
                     .symbol = QStringLiteral("tray")});
    for (const auto& project : projects)
        if (query.isEmpty() || matches(project, query))
            found.append({.key = project.id,
                          .title = visibleName(project.name, project.id),
                          .subtitle = visibleText(project.reference.value_or(QString())),
                          .symbol = QStringLiteral("folder.fill")});
    return rows + (order == ProjectOrder::Name ? sorted(found) : found);
}

} // namespace palvera
