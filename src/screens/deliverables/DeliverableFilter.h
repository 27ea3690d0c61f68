#pragma once

#include "screens/deliverables/DeliverableCard.h"

#include <QStringList>

namespace palvera {

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

/// In which order to show them. Rows that are the same in it stay as the platform has them.
struct DeliverableOrder {
    static const QString platform, name, status;
};

/// `cards` in that order, by the user's language; numbers within names count as numbers.
DeliverableCards sorted(DeliverableCards cards, const QString& order);

/// What the filters can be set to.
struct FilterValues {
    QStringList families; ///< each begins with "All"; the rest by code point
    QStringList statuses;
    QStringList languages;

    bool operator==(const FilterValues&) const = default;
};
FilterValues filterValues(const DeliverableCards& cards);

} // namespace palvera
