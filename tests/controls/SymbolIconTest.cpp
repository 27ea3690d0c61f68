#include "controls/SymbolIcon.h"
#include "tests/support/Screen.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QPainter>

namespace palvera {
namespace {

int paintedPixels(const QString& name, const QColor& color)
{
    SymbolIcon icon;
    icon.setSize({32, 32});
    icon.setName(name);
    icon.setProperty("color", QColor(color));
    QImage picture(32, 32, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    icon.paint(&painter);
    int painted = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (auto pixel = picture.pixelColor(x, y); pixel.alpha() == 255 && pixel.rgb() == color.rgb())
                ++painted;
    return painted;
}

TEST(SymbolIconTest, drawsEverySymbolInTheColorAsked)
{
    auto symbols = QDir(":/palvera/symbols").entryList({"*.svg"});
    ASSERT_GT(symbols.size(), 20);
    for (const auto& file : symbols)
        EXPECT_GT(paintedPixels(file.chopped(4), QColor("#1e90ff")), 10) << file.toStdString();
}

TEST(SymbolIconTest, warnsOfASymbolThatThereIsNot)
{
    Screen screen;
    EXPECT_EQ(paintedPixels("no.such.symbol", Qt::red), 0);
    auto warnings = screen.takeWarnings();
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.first().contains("no.such.symbol"));
}

} // namespace
} // namespace palvera
