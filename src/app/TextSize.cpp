#include "app/TextSize.h"

#include "files/Preferences.h"

#include <algorithm>
#include <array>

namespace palvera {

namespace {

const QString preferencesKey = QStringLiteral("pv.textSize");
constexpr std::array steps{80, 90, 100, 110, 125, 150, 175, 200}; // percent
constexpr int usual = 100;
constexpr double most = 3; // of both together: no screen has room for more

int percentIn(const QString& stored)
{
    const int percent = stored.toInt();
    return std::ranges::find(steps, percent) == steps.end() ? usual : percent;
}

} // namespace

TextSize::TextSize(Preferences& preferences, QObject* parent)
    : QObject(parent),
      m_preferences(preferences),
      m_percent(percentIn(preferences.string(preferencesKey).value_or(QString())))
{}

double TextSize::scale() const
{
    return std::min(most, m_desktopScale * m_percent / 100);
}

void TextSize::setDesktopScale(double scale)
{
    m_desktopScale = scale;
    Q_EMIT changed();
}

void TextSize::reset()
{
    m_percent = usual;
    m_preferences.remove(preferencesKey);
    Q_EMIT changed();
}

void TextSize::step(int by)
{
    const auto at = std::ranges::find(steps, m_percent) - steps.begin();
    m_percent = steps[std::size_t(std::clamp<qsizetype>(at + by, 0, steps.size() - 1))];
    m_preferences.setString(preferencesKey, QString::number(m_percent));
    Q_EMIT changed();
}

} // namespace palvera
