#include "tests/support/Screen.h"

#include <gtest/gtest.h>

#include <QColor>

#include <cmath>

namespace palvera {
namespace {

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// Relative luminance, as the Web Content Accessibility Guidelines 2.1 define it.
double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

constexpr double forText = 4.5; // level AA
constexpr double forShapes = 3;

const std::tuple<const char*, QList<const char*>, double> pairs[] = {
    {"text",
     {"window", "bar", "surface", "raised", "field", "hover", "pressed", "chosen", "accentSoft", "warningSoft",
      "dangerSoft"},
     forText},
    {"secondary", {"window", "bar", "surface", "raised", "field", "hover", "pressed", "accentSoft"}, forText},
    {"placeholder", {"field"}, forText},
    {"accent", {"window", "bar", "surface", "raised", "field", "accentSoft", "warningSoft"}, forText},
    {"danger", {"window", "surface", "raised", "hover", "pressed", "accentSoft", "dangerSoft"}, forText},
    {"success", {"window", "surface", "raised", "successSoft"}, forText},
    {"warning", {"window", "surface", "raised", "field", "warningSoft"}, forText},
    {"onFill", {"accentFill", "accentFillHover", "dangerFill", "dangerFillHover", "warningFill"}, forText},
    {"orange", {"window", "field", "warningSoft"}, forShapes},
    {"green", {"surface", "hover", "pressed", "accentSoft"}, forShapes},
    {"focusRing", {"window", "bar", "surface", "raised", "field"}, forShapes},
};

TEST(ContrastTest, everyTextCanBeReadOnWhatItStandsOn)
{
    Screen screen;
    screen.showContent("property QtObject theme: Theme");
    auto* theme = screen.window().property("theme").value<QObject*>();
    ASSERT_TRUE(theme);
    for (bool dark : {false, true}) {
        theme->setProperty("dark", dark);
        for (const auto& [front, backs, least] : pairs) {
            for (const auto* back : backs) {
                auto ink = theme->property(front), behind = theme->property(back);
                ASSERT_TRUE(ink.isValid() && behind.isValid()) << front << " on " << back;
                EXPECT_GE(contrast(ink.value<QColor>(), behind.value<QColor>()), least)
                    << front << " on " << back << (dark ? ", dark" : ", light");
            }
        }
    }
}

} // namespace
} // namespace palvera
