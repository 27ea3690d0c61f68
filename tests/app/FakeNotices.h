#pragma once

#include "desktop/Notices.h"

#include <QStringList>

namespace palvera {

/// Keeps what the user is told.
struct FakeNotices final : Notices {
    QStringList shown;

    void show(const QString& title, const QString& text) override { shown.append(title + ": " + text); }
};

} // namespace palvera
