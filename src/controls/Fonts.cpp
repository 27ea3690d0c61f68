#include "controls/Fonts.h"

#include <QFontDatabase>

namespace palvera {

void loadFonts()
{
    for (const auto* weight : {"Regular", "Medium", "SemiBold", "Bold"})
        QFontDatabase::addApplicationFont(QStringLiteral(":/palvera/fonts/Inter-%1.otf").arg(QLatin1String(weight)));
    for (const auto* weight : {"Regular", "Medium"})
        QFontDatabase::addApplicationFont(QStringLiteral(":/palvera/fonts/Tabular-%1.otf").arg(QLatin1String(weight)));
}

} // namespace palvera
