#pragma once

#include <QByteArray>
#include <QString>

namespace palvera {

/// Somebody at one service.
struct Account {
    QByteArray service; ///< the address of the service
    QString userId;

    bool operator==(const Account&) const = default;
};

} // namespace palvera
