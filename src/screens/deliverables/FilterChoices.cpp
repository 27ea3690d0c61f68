#include "screens/deliverables/FilterChoices.h"

namespace palvera {

FilterChoices::FilterChoices(Describe describe, QObject* parent)
    : RowsModel({{"value", &FilterChoice::key}, {"label", &FilterChoice::label}, {"code", &FilterChoice::code}},
                parent),
      m_describe(describe)
{}

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

} // namespace palvera
