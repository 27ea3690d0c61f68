#include "controls/DataImage.h"
#include "controls/SymbolIcon.h"
#include "tests/support/Screen.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QPainter>

#include <span>

namespace palvera {
namespace {

/// A red picture as text.
QString addressOf(int width, int height, const char* format, const QString& type)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, format));
    return "data:image/" + type + ";base64," + QString::fromLatin1(bytes.toBase64());
}

TEST(DataImageTest, decodesPicturesWithinItsLimits)
{
    const auto good = addressOf(30, 20, "png", "png");
    const std::pair<QString, QSize> cases[] = {
        {good, {30, 20}},
        {addressOf(8, 8, "jpeg", "jpeg"), {8, 8}},
        {"DATA:image/PNG;base64," + good.section(',', 1), {30, 20}},
        {addressOf(2048, 1, "png", "png"), {2048, 1}},
        {addressOf(2049, 1, "png", "png"), {}},
        {addressOf(1, 2049, "png", "png"), {}},
        {addressOf(8, 8, "png", "jpeg"), {}}, // not what it says it is
        {addressOf(8, 8, "bmp", "bmp"), {}},
        {good.left(good.size() / 2), {}},
        {good + QString(DataImage::longestAddress, 'A'), {}},
        {"data:image/png;base64,", {}},
        {"data:image/png,plain", {}},
        {"data:image/svg+xml;base64,PHN2Zy8+", {}},
        {"file:///etc/passwd", {}},
    };
    for (const auto& [address, size] : cases) {
        auto image = DataImage::decode(address);
        EXPECT_EQ(image.size(), size.isEmpty() ? QSize(0, 0) : size) << address.left(60).toStdString();
    }
}

TEST(DataImageTest, showsTheLastAddressThatItWasGiven)
{
    Screen screen;
    screen.showContent("property int state: image.state\n"
                       "property alias address: image.address\n"
                       "DataImage { id: image; width: 100; height: 100 }");
    auto state = [&] { return screen.window().property("state").toInt(); };
    EXPECT_EQ(state(), DataImage::Empty);
    screen.window().setProperty("address", addressOf(2000, 2000, "png", "png"));
    EXPECT_EQ(state(), DataImage::Decoding);
    screen.window().setProperty("address", "data:image/png;base64,AAAA");
    screen.waitUntil([&] { return state() == DataImage::Failed; });
    screen.window().setProperty("address", addressOf(10, 10, "png", "png"));
    screen.waitUntil([&] { return state() == DataImage::Ready; });
    EXPECT_EQ(screen.window().grabWindow().pixelColor(50, 50), QColor(Qt::red));
    screen.window().setProperty("address", "");
    EXPECT_EQ(state(), DataImage::Empty);
    EXPECT_NE(screen.window().grabWindow().pixelColor(50, 50), QColor(Qt::red));
}

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

TEST(SymbolIconTest, drawsEverySymbolInTheColorAskedAndWarnsOfOneThatThereIsNot)
{
    Screen screen;
    auto symbols = QDir(":/palvera/symbols").entryList({"*.svg"});
    ASSERT_GT(symbols.size(), 20);
    for (const auto& file : symbols)
        EXPECT_GT(paintedPixels(file.chopped(4), QColor("#1e90ff")), 10) << file.toStdString();
    EXPECT_EQ(paintedPixels("no.such.symbol", Qt::red), 0);
    EXPECT_TRUE(screen.takeWarnings().join(' ').contains("no.such.symbol"));
}

} // namespace
} // namespace palvera
