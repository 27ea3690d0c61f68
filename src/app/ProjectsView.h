#pragma once

#include "app/ProjectRows.h"
#include "async/Failure.h"
#include "async/TaskScope.h"
#include "screens/RowsModel.h"
#include "text/VisibleText.h"

#include <QtQml/qqmlregistration.h>

namespace palvera {

class API;

/// The projects screen of the organisation that is open: its rows, the search above them and what goes wrong.
///
/// Lives on the main thread. One is used for one organisation after the other.
class ProjectsView : public RowsModel<ProjectRow> {
    Q_OBJECT
    QML_NAMED_ELEMENT(ProjectsModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(QString orgName READ orgName NOTIFY orgChanged)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadChanged)
    Q_PROPERTY(QString error READ error NOTIFY loadChanged)
    Q_PROPERTY(bool empty READ isEmpty NOTIFY loadChanged)
    Q_PROPERTY(QStringList orders READ orders CONSTANT)
    Q_PROPERTY(int order READ order WRITE setOrder NOTIFY orderChanged)
    Q_PROPERTY(bool sortable READ isSortable NOTIFY loadChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)

public:
    ProjectsView(API& api, const Executor& main, QObject* parent = nullptr);

    /// Begins afresh with `org` and loads its projects.
    void open(const Org& org);
    /// Loads the projects again. A failure leaves those that are there.
    Q_INVOKABLE void load();
    /// Cuts off what is under way; see TaskScope.
    Task<void> close() { return m_tasks.close(); }

    /// Nothing where the row is no project.
    std::optional<Project> projectAt(int row) const;
    QString orgName() const { return visibleName(m_org.name, m_org.id); }
    bool isLoading() const { return m_loading; }
    /// Why the last load failed, for the user; empty when it did not.
    QString error() const { return m_failure ? describe(m_failure) : QString(); }
    /// The organisation was asked, and has no projects.
    bool isEmpty() const { return m_loaded && m_projects.isEmpty(); }
    static QStringList orders(); ///< their names, by their values
    /// One of ProjectOrder; stays from client to client.
    int order() const { return int(m_order); }
    void setOrder(int order);
    bool isSortable() const { return m_projects.size() > 1; }
    QString search() const { return m_search; }
    void setSearch(const QString& search);

Q_SIGNALS:
    void orgChanged();
    void loadChanged();
    void orderChanged();
    void searchChanged();

private:
    Task<void> listOnce();
    void showRows();

    API& m_api;
    TaskScope m_tasks;
    Org m_org;
    QList<Project> m_projects;
    bool m_loaded = false;
    bool m_loading = false;
    std::exception_ptr m_failure;
    ProjectOrder m_order = ProjectOrder::Platform;
    QString m_search;
};

} // namespace palvera
