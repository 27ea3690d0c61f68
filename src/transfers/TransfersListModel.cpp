#include "transfers/TransfersListModel.h"

#include <QDateTime>
#include <QTimeZone>

namespace palvera {

namespace {

QString deliverableIdOf(const Item& item)
{
    const auto* deliverable = item.target.asDeliverable();
    return deliverable ? deliverable->deliverableId : QString();
}

QVariant retryAtOf(const Item& item)
{
    const auto* retrying = std::get_if<Item::Retrying>(&item.state);
    if (!retrying)
        return {};
    auto since = std::chrono::duration_cast<std::chrono::milliseconds>(retrying->until.time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(since.count(), Qt::UTC);
}

/// The roles in which two values of one item differ; those that make up its identity never do.
QList<int> differences(const Item& a, const Item& b)
{
    QList<int> roles;
    auto note = [&roles](bool differs, std::initializer_list<int> affected) {
        if (differs)
            roles.append(affected);
    };
    using Model = TransfersListModel;
    note(a.name != b.name, {Model::nameRole, Qt::DisplayRole});
    note(a.label != b.label, {Model::labelRole});
    note(a.titleName != b.titleName, {Model::titleNameRole});
    note(a.state.index() != b.state.index(), {Model::stateRole});
    note(messageOf(a.state) != messageOf(b.state), {Model::messageRole});
    note(retryAtOf(a) != retryAtOf(b), {Model::retryAtRole});
    note(a.isInFlight() != b.isInFlight(), {Model::inFlightRole});
    note(a.sent != b.sent, {Model::sentRole});
    note(a.total != b.total, {Model::totalRole});
    note(a.rate != b.rate, {Model::rateRole});
    note(a.file != b.file, {Model::fileRole});
    note(a.trace.samples != b.trace.samples, {Model::samplesRole});
    return roles;
}

QVariant valueOf(const Item& item, int role)
{
    switch (role) {
    case TransfersListModel::idRole:
        return item.id;
    case TransfersListModel::kindRole:
        return item.kind == Item::Kind::upload ? QStringLiteral("upload") : QStringLiteral("download");
    case Qt::DisplayRole:
    case TransfersListModel::nameRole:
        return item.name;
    case TransfersListModel::labelRole:
        return item.label;
    case TransfersListModel::titleNameRole:
        return item.titleName.value_or(QString());
    case TransfersListModel::orgIdRole:
        return item.target.orgId();
    case TransfersListModel::projectIdRole:
        return item.target.projectId();
    case TransfersListModel::deliverableIdRole:
        return deliverableIdOf(item);
    case TransfersListModel::stateRole:
        return nameOf(item.state);
    case TransfersListModel::messageRole:
        return messageOf(item.state);
    case TransfersListModel::retryAtRole:
        return retryAtOf(item);
    case TransfersListModel::sentRole:
        return item.sent;
    case TransfersListModel::totalRole:
        return item.total;
    case TransfersListModel::rateRole:
        return item.rate ? QVariant(*item.rate) : QVariant();
    case TransfersListModel::samplesRole:
        return QVariant::fromValue(item.trace.samples);
    case TransfersListModel::inFlightRole:
        return item.isInFlight();
    case TransfersListModel::fileRole:
        return item.file;
    default: // Qt asks for its own roles too
        return {};
    }
}

} // namespace

int TransfersListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_items.size());
}

QVariant TransfersListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    return valueOf(m_items[std::size_t(index.row())], role);
}

QHash<int, QByteArray> TransfersListModel::roleNames() const
{
    return {{idRole, "transferId"}, // an "id" is something else in QML
            {kindRole, "kind"},
            {nameRole, "name"},
            {labelRole, "label"},
            {titleNameRole, "titleName"},
            {orgIdRole, "orgId"},
            {projectIdRole, "projectId"},
            {deliverableIdRole, "deliverableId"},
            {stateRole, "transferState"}, // a QML item has a "state" of its own
            {messageRole, "message"},
            {retryAtRole, "retryAt"},
            {sentRole, "sent"},
            {totalRole, "total"},
            {rateRole, "rate"},
            {samplesRole, "samples"},
            {inFlightRole, "inFlight"},
            {fileRole, "file"}};
}

const Item* TransfersListModel::find(const QUuid& id) const
{
    auto row = m_rows.find(id);
    return row == m_rows.end() ? nullptr : &m_items[*row];
}

void TransfersListModel::append(Item item)
{
    int row = int(m_items.size());
    beginInsertRows({}, row, row);
    m_rows.insert(item.id, m_items.size());
    m_items.push_back(std::move(item));
    endInsertRows();
}

bool TransfersListModel::change(const QUuid& id, const std::function<void(Item&)>& change)
{
    auto row = m_rows.find(id);
    if (row == m_rows.end())
        return false;
    Item changed = m_items[*row];
    change(changed);
    if (changed == m_items[*row])
        return false;
    auto roles = differences(m_items[*row], changed);
    auto where = index(int(*row));
    m_items[*row] = std::move(changed);
    if (!roles.isEmpty())
        Q_EMIT dataChanged(where, where, roles);
    return true;
}

bool TransfersListModel::remove(const QUuid& id)
{
    auto found = m_rows.find(id);
    if (found == m_rows.end())
        return false;
    auto row = *found;
    beginRemoveRows({}, int(row), int(row));
    m_rows.erase(found);
    m_items.erase(m_items.begin() + std::ptrdiff_t(row));
    renumber(row);
    endRemoveRows();
    return true;
}

void TransfersListModel::renumber(std::size_t from)
{
    for (auto row = from; row < m_items.size(); ++row)
        m_rows[m_items[row].id] = row;
}

} // namespace palvera
