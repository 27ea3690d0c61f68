#include "screens/FilterChoices.h"

namespace palvera {

FilterChoices::FilterChoices(Describe describe, QObject* parent) : RowsModel(parent), m_describe(describe) {}

void FilterChoices::setValues(const QStringList& values)
{
    QList<FilterChoice> choices;
    for (const auto& value : values)
        choices.append(m_describe(value));
    setRows(choices);
}

int FilterChoices::indexOf(const QString& value) const
{
    auto found = std::ranges::find(rows(), value, &FilterChoice::key);
    return found == rows().end() ? -1 : int(found - rows().begin());
}

QString FilterChoices::valueAt(int index) const
{
    return rows().value(index).key;
}

QString FilterChoices::labelOf(const QString& value) const
{
    return m_describe(value).label;
}

QVariant FilterChoices::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& choice = rows()[index.row()];
    switch (role) {
    case valueRole:
        return choice.key;
    case labelRole:
        return choice.label;
    case codeRole:
        return choice.code;
    default:
        return {};
    }
}

QHash<int, QByteArray> FilterChoices::roleNames() const
{
    return {{valueRole, "value"}, {labelRole, "label"}, {codeRole, "code"}};
}

} // namespace palvera
