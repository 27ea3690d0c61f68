#include "app/ProjectsView.h"

#include "async/Failure.h"
#include "async/TaskGroup.h"
#include "service/BrowsingOperations.h"

namespace palvera {

ProjectsView::ProjectsView(API& api, const Executor& main, QObject* parent)
    : RowsModel({{"title", &ProjectRow::title}, {"subtitle", &ProjectRow::subtitle}, {"symbol", &ProjectRow::symbol}},
                parent),
      m_api(api),
      m_tasks(main)
{
    showRows();
}

void ProjectsView::open(const Org& org)
{
    m_org = org;
    m_projects.clear();
    m_loaded = false;
    m_failure = nullptr;
    Q_EMIT orgChanged();
    setSearch({});
    showRows();
    load();
}

void ProjectsView::load()
{
    m_tasks.stop();
    m_loading = true;
    Q_EMIT loadChanged();
    m_tasks.start(listOnce());
}

Task<void> ProjectsView::listOnce()
{
    auto outcome = co_await answerOf(listProjects(m_api, m_org.id));
    m_loading = false;
    m_failure = outcome.failure;
    if (outcome.value) {
        m_projects = *std::move(outcome.value);
        m_loaded = true;
    }
    showRows();
    Q_EMIT loadChanged();
}

std::optional<Project> ProjectsView::projectAt(int row) const
{
    auto key = rows().value(row).key;
    auto found = std::ranges::find(m_projects, key, &Project::id);
    return key.isEmpty() || found == m_projects.end() ? std::nullopt : std::optional(*found);
}

QStringList ProjectsView::orders()
{
    return {tr("Platform"), tr("Name")};
}

void ProjectsView::setOrder(int order)
{
    if (order == this->order())
        return;
    m_order = ProjectOrder(order);
    showRows();
    Q_EMIT orderChanged();
}

void ProjectsView::setSearch(const QString& search)
{
    if (search == m_search)
        return;
    m_search = search;
    showRows();
    Q_EMIT searchChanged();
}

void ProjectsView::showRows()
{
    setRows(projectRows(m_projects, m_search, m_order));
}

} // namespace palvera
