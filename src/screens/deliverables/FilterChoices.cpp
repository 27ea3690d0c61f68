#include "screens/deliverables/FilterChoices.h"

#include "text/VisibleText.h"

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
        choices.append(shown(value));
    setRows(choices);
    ++m_revision;
    Q_EMIT revised();
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
    return shown(value).label;
}

FilterChoice FilterChoices::shown(const QString& value) const
{
    auto choice = m_describe(value);
    choice.label = visibleText(choice.label);
    choice.code = visibleText(choice.code);
    return choice;
}

} // namespace palvera
