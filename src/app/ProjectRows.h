#pragma once

#include "service/Organisations.h"

namespace palvera {

/// One row of the projects screen.
struct ProjectRow {
    QString key; ///< the project's id; empty for the assets row
    QString title;
    QString subtitle;
    QString symbol;

    bool operator==(const ProjectRow&) const = default;
};

enum class ProjectOrder { Platform, Name };

/// The assets row, and a row for each project whose name or reference has the search in it; all of them for a search of
/// nothing but space. Case does not matter.
QList<ProjectRow> projectRows(const QList<Project>& projects, const QString& search,
                              ProjectOrder order = ProjectOrder::Platform);

} // namespace palvera
