#include "controls/Fonts.h"

#include <QFont>
#include <QFontDatabase>

namespace palvera {

void loadFonts()
{
    for (const auto* weight : {"Regular", "Medium", "SemiBold"})
        QFontDatabase::addApplicationFont(QStringLiteral(":/palvera/fonts/Inter-%1.otf").arg(QLatin1String(weight)));
    for (const auto* weight : {"Regular", "Medium"})
        QFontDatabase::addApplicationFont(QStringLiteral(":/palvera/fonts/Tabular-%1.otf").arg(QLatin1String(weight)));
    QFont::insertSubstitution(QStringLiteral("Palvera Figures"), QStringLiteral("Inter")); // for all but Latin
}

} // namespace palvera
