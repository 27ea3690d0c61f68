#pragma once

#include "service/Deliverable.h"

#include <QList>

#include <memory>

namespace palvera {

/// Whether a file has been filed on the row.
bool isFiled(const Deliverable& deliverable);

/// What the row is called.
QString titleOf(const Deliverable& deliverable);
/// Why nothing goes to a row that the platform has removed.
QString noLongerThere(const Deliverable& deliverable);

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

} // namespace palvera
