#pragma once

#include "async/Failure.h"
#include "async/TaskScope.h"
#include "screens/RowsModel.h"
#include "screens/deliverables/DeliverableFilter.h"
#include "screens/deliverables/FilterChoices.h"
#include "service/Organisations.h"
#include "text/VisibleText.h"

#include <QHash>

#include <QtQml/qqmlregistration.h>

namespace palvera {

class API;
class Clock;
class Transfers;

/// A row of the list: what is in `card` never changes, a row that does has another one.
struct DeliverableRow {
    QString key; ///< the deliverable's id
    std::shared_ptr<const DeliverableCard> card;

    bool operator==(const DeliverableRow& other) const
    {
        return key == other.key && (card == other.card || card->deliverable == other.card->deliverable);
    }
};

/// The deliverables of one project: those that the filters let through, how they are set, and what goes wrong. It keeps
/// itself up to date as long as the project is open.
///
/// Lives on the main thread; answers are decoded elsewhere. One is used for one project after the other.
class DeliverablesView : public RowsModel<DeliverableRow> {
    Q_OBJECT
    QML_NAMED_ELEMENT(DeliverablesModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(QString title READ title NOTIFY projectChanged)
    Q_PROPERTY(QString orgName READ orgName NOTIFY projectChanged)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadChanged)
    Q_PROPERTY(QString error READ error NOTIFY loadChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY filterChanged)
    Q_PROPERTY(QString family READ family WRITE setFamily NOTIFY filterChanged)
    Q_PROPERTY(QString status READ status WRITE setStatus NOTIFY filterChanged)
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY filterChanged)
    Q_PROPERTY(QString filled READ filled WRITE setFilled NOTIFY filterChanged)
    Q_PROPERTY(QString order READ order WRITE setOrder NOTIFY filterChanged)
    Q_PROPERTY(bool anyFilter READ anyFilter NOTIFY filterChanged)
    Q_PROPERTY(QString countText READ countText NOTIFY countChanged)
    Q_PROPERTY(bool refreshing READ isRefreshing NOTIFY refreshingChanged)
    Q_PROPERTY(palvera::FilterChoices* families READ families CONSTANT)
    Q_PROPERTY(palvera::FilterChoices* statuses READ statuses CONSTANT)
    Q_PROPERTY(palvera::FilterChoices* languages READ languages CONSTANT)
    Q_PROPERTY(palvera::FilterChoices* fillings READ fillings CONSTANT)
    Q_PROPERTY(palvera::FilterChoices* orders READ orders CONSTANT)

public:
    /// What it works with. Everything referred to outlives it.
    struct Environment {
        Executor main;
        Executor background; ///< threads for decoding
        Clock& clock;
        API& api;
        Transfers& transfers;
    };

    explicit DeliverablesView(const Environment& environment, QObject* parent = nullptr);

    /// Begins afresh with that project: loads its deliverables, and again every 30 seconds.
    void open(const Org& org, const Project& project);
    /// Ends what keeps it up to date, until it is opened again.
    void leave();
    /// Cuts off what is under way; see TaskScope.
    Task<void> close();
    /// Loads the deliverables again. A failure leaves those that are there.
    Q_INVOKABLE void load();
    /// Lets every row through but for the search.
    Q_INVOKABLE void clear();

    const Org& org() const { return m_org; }
    const Project& project() const { return m_project; }
    QString title() const { return visibleName(m_project.name, m_project.id); }
    QString orgName() const { return visibleName(m_org.name, m_org.id); }
    /// A load is running while there is nothing to show.
    bool isLoading() const { return m_loading; }
    /// Why the last load failed, for the user; empty when it did not.
    QString error() const { return m_failure ? describe(m_failure) : QString(); }
    const QString& search() const { return m_filter.search; }
    void setSearch(const QString& search) { choose(&DeliverableFilter::search, search); }
    const QString& family() const { return m_filter.family; }
    void setFamily(const QString& family) { choose(&DeliverableFilter::family, family); }
    const QString& status() const { return m_filter.status; }
    void setStatus(const QString& status) { choose(&DeliverableFilter::status, status); }
    const QString& language() const { return m_filter.language; }
    void setLanguage(const QString& language) { choose(&DeliverableFilter::language, language); }
    /// "All", "Filled" or "Empty".
    QString filled() const;
    void setFilled(const QString& filled);
    /// One of DeliverableOrder; stays from project to project.
    const QString& order() const { return m_order; }
    void setOrder(const QString& order);
    /// Whether any filter but the search is set.
    bool anyFilter() const { return m_filter.isSet(); }
    /// "3 of 10".
    QString countText() const;
    /// Whether the latest change of the rows came from the platform, and not from a filter.
    bool isRefreshing() const { return m_refreshing; }

    FilterChoices* families() { return &m_families; }
    FilterChoices* statuses() { return &m_statuses; }
    FilterChoices* languages() { return &m_languages; }
    FilterChoices* fillings() { return &m_fillings; }
    FilterChoices* orders() { return &m_orders; }

    /// All rows as last loaded, in the platform's order.
    const DeliverableCards& cards() const { return m_cards; }
    /// The deliverable of that row of those shown.
    const Deliverable& deliverableAt(int row) const { return rows()[row].card->deliverable; }
    /// Null when there is none of that id.
    const Deliverable* find(const QString& id) const;

Q_SIGNALS:
    void projectChanged();
    void loadChanged();
    void filterChanged();
    void countChanged();
    void refreshingChanged();
    /// The platform has answered which rows there are, others or the same.
    void loaded();

private:
    struct Moving {
        QString text;         ///< of the badge
        bool isStill = false; ///< it waits, or is paused

        bool operator==(const Moving&) const = default;
    };

    Task<void> loadOnce();
    Task<void> keepFresh();
    Task<void> loadAfterUpload();
    void loadSoonAfterUpload();
    void take(DeliverableCards cards);
    void choose(QString DeliverableFilter::* what, const QString& value);
    void setFilter(DeliverableFilter filter);
    void showRows(bool refreshing);
    void updateMoving();
    void updateMovingOf(const QUuid& item);
    void updateMovingAt(const QString& id);
    void updateFailed();
    bool hasFailed(const QString& id) const;
    QString badgeOf(const Deliverable& row) const;
    QString spokenOf(const DeliverableCard& card) const;
    int rowOf(const QString& id) const;

    const Environment m_environment;
    const Executor m_decoding; // a strand
    TaskScope m_tasks;
    TaskScope m_uploadTasks;
    Org m_org;
    Project m_project;
    bool m_open = false;
    DeliverableCards m_cards;
    QString m_order = DeliverableOrder::platform;
    DeliverableCards m_sorted; // the same, in that order
    DeliverableFilter m_filter;
    FilterChoices m_families, m_statuses, m_languages, m_fillings, m_orders;
    QHash<QString, Moving> m_moving;     // deliverables with a transfer in flight
    mutable QHash<QString, int> m_where; // the rows by id, empty until somebody asks
    int m_loadsBegun = 0;
    int m_loadTaken = 0; // the number of the latest load that has come to something
    bool m_loading = false;
    bool m_refreshing = false;
    std::exception_ptr m_failure;
};

} // namespace palvera
