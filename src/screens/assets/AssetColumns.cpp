#include "screens/assets/AssetColumns.h"

#include "files/Preferences.h"

#include <QStringList>

#include <algorithm>

namespace palvera {

namespace {

constexpr AssetColumns::Widths least{120, 80, 70, 110};
constexpr AssetColumns::Widths usual{200, 110, 90, 130};
constexpr AssetColumns::Widths most{320, 200, 120, 200};
constexpr double leastName = 260;

} // namespace

const QString AssetColumns::preferencesKey = QStringLiteral("pv.assets.columns");

AssetColumns::AssetColumns(Preferences& preferences, QObject* parent)
    : QObject(parent),
      m_preferences(preferences),
      m_wanted(parse(preferences.string(preferencesKey).value_or(QString())))
{
    fit();
}

void AssetColumns::setAvailable(double available)
{
    m_available = available;
    fit();
}

void AssetColumns::setScale(double scale)
{
    m_scale = scale;
    fit();
}

double AssetColumns::name() const
{
    return m_available - deal() - type() - size() - date();
}

void AssetColumns::setWidth(Column column, double width)
{
    m_wanted[column] = std::clamp(width / m_scale, least[column], most[column]);
    QStringList numbers;
    for (auto each : m_wanted)
        numbers.append(QString::number(qRound(each)));
    m_preferences.setString(preferencesKey, numbers.join(u','));
    fit();
}

void AssetColumns::fit()
{
    m_shown = fitted(m_wanted, m_available / m_scale);
    Q_EMIT changed();
}

AssetColumns::Widths AssetColumns::fitted(const Widths& wanted, double available)
{
    auto widths = wanted;
    double more = 0, needed = leastName; // than the least
    for (std::size_t i = 0; i < widths.size(); ++i) {
        more += widths[i] - least[i];
        needed += widths[i];
    }
    if (needed <= available)
        return widths;
    if (needed - more > available)
        return {};
    const double kept = 1 - (needed - available) / more;
    for (std::size_t i = 0; i < widths.size(); ++i)
        widths[i] = least[i] + (widths[i] - least[i]) * kept;
    return widths;
}

AssetColumns::Widths AssetColumns::parse(const QString& stored)
{
    const auto numbers = stored.split(u',');
    auto widths = usual;
    if (numbers.size() != qsizetype(widths.size()))
        return usual;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        bool isNumber = false;
        widths[i] = std::clamp(numbers[qsizetype(i)].toDouble(&isNumber), least[i], most[i]);
        if (!isNumber)
            return usual;
    }
    return widths;
}

} // namespace palvera
