#pragma once

#include "transfers/Item.h"

#include <QAbstractListModel>
#include <QHash>

#include <functional>
#include <vector>

namespace palvera {

/// The items of one Transfers as rows, in the order added. Rows come and go one by one, a change announces the roles
/// that it changed, and the model is never reset. Main thread; only its Transfers changes it.
class TransfersListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        idRole = Qt::UserRole + 1, ///< QUuid
        kindRole,                  ///< "upload" or "download"
        nameRole,                  ///< text
        labelRole,                 ///< text
        titleNameRole,             ///< text, empty when absent
        orgIdRole,                 ///< text
        projectIdRole,             ///< text, empty for the bin
        deliverableIdRole,         ///< text, empty for the bin
        stateRole,                 ///< text, see `nameOf`
        messageRole,               ///< text: what went wrong, empty when nothing did
        retryAtRole,               ///< QDateTime in UTC; invalid unless it is about to be tried again
        sentRole,                  ///< bytes
        totalRole,                 ///< bytes, 0 when unknown
        rateRole,                  ///< bytes per second; invalid when unknown
        samplesRole,               ///< QList<double>, bytes per second, oldest first
        inFlightRole,              ///< whether it waits, runs or is about to be tried again
        fileRole,                  ///< text, see Item::file
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const std::vector<Item>& items() const { return m_items; }
    /// Nothing when no item has that id. Valid until the next change.
    const Item* find(const QUuid& id) const;

    void append(Item item);
    /// Lets `change` alter the item and announces what differs. False when no item has that id or nothing differs.
    bool change(const QUuid& id, const std::function<void(Item&)>& change);
    /// False when no item has that id.
    bool remove(const QUuid& id);

private:
    void renumber(std::size_t from);

    std::vector<Item> m_items;
    QHash<QUuid, std::size_t> m_rows; // where each item stands
};

} // namespace palvera
