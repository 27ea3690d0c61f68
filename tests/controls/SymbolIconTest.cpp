#include "controls/SymbolIcon.h"
#include "tests/support/Screen.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QPainter>

#include <span>

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
    auto pixels = std::span(reinterpret_cast<const QRgb*>(picture.constBits()), 32 * 32);
    return int(std::ranges::count(pixels, color.rgba()));
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
    EXPECT_TRUE(screen.takeWarnings().join(' ').contains("no.such.symbol"));
}

} // namespace
} // namespace palvera
