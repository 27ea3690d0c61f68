#pragma once

#include "service/Deliverable.h"

#include <QStringList>

#include <memory>

namespace palvera {

/// Whether a file has been filed on the row.
bool isFiled(const Deliverable& deliverable);

/// A deliverable with what the list shows of it and finds it by, made once when the row is loaded. Never changes, so it
/// may be shared between threads.
struct DeliverableCard {
    explicit DeliverableCard(Deliverable deliverable);

    const Deliverable deliverable;
    const QString searchText; ///< in lower case
    const QString title;
    const QString details; ///< the second line: where it belongs, language and size, as far as they are known
    const bool isFiled;
};
using DeliverableCards = QList<std::shared_ptr<const DeliverableCard>>;

/// Which rows of a project to show.
struct DeliverableFilter {
    /// What lets every row through.
    static const QString all;
    enum class Filled { all, yes, no };

    QString search = {};
    QString family = all;
    QString status = all;
    QString language = all;
    Filled filled = Filled::all;

    /// Whether anything but the search is set.
    bool isSet() const;
    bool operator==(const DeliverableFilter&) const = default;
};

/// Whether the row passes. `query` is the search as `queryOf` gives it.
bool matches(const DeliverableCard& card, const DeliverableFilter& filter, const QString& query);
/// The search without spaces around it, in lower case.
QString queryOf(const QString& search);

/// What the filters can be set to.
struct FilterValues {
    QStringList families; ///< each begins with "All"; the rest by code point
    QStringList statuses;
    QStringList languages;

    bool operator==(const FilterValues&) const = default;
};
FilterValues filterValues(const DeliverableCards& cards);

} // namespace palvera
