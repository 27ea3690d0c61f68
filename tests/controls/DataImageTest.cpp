#include "controls/DataImage.h"
#include "tests/support/Screen.h"

#include <gtest/gtest.h>

#include <QBuffer>

namespace palvera {
namespace {

QString addressOf(const QImage& image, const char* format, const QString& type)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format));
    return "data:image/" + type + ";base64," + QString::fromLatin1(bytes.toBase64());
}

QImage picture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

TEST(DataImageTest, decodesPicturesWithinItsLimits)
{
    const auto good = addressOf(picture(30, 20), "png", "png");
    const std::vector<std::pair<QString, QSize>> cases = {
        {good, {30, 20}},
        {addressOf(picture(8, 8), "jpeg", "jpeg"), {8, 8}},
        {"DATA:image/PNG;base64," + good.section(',', 1), {30, 20}},
        {addressOf(picture(2048, 1), "png", "png"), {2048, 1}},
        {addressOf(picture(2049, 1), "png", "png"), {}},
        {addressOf(picture(1, 2049), "png", "png"), {}},
        {addressOf(picture(8, 8), "png", "jpeg"), {}}, // not what it says it is
        {addressOf(picture(8, 8), "bmp", "bmp"), {}},
        {good.left(good.size() / 2), {}},
        {good + QString(DataImage::longestAddress, 'A'), {}},
        {"data:image/png;base64,", {}},
        {"data:image/png,plain", {}},
        {"data:image/svg+xml;base64,PHN2Zy8+", {}},
        {"file:///etc/passwd", {}},
        {"https://palvera.example/qr.png", {}},
        {"", {}},
    };
    for (const auto& [address, size] : cases) {
        auto image = DataImage::decode(address);
        EXPECT_EQ(image.isNull() ? QSize() : image.size(), size.isEmpty() ? QSize() : size)
            << address.left(60).toStdString();
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
    screen.window().setProperty("address", addressOf(picture(2000, 2000), "png", "png"));
    EXPECT_EQ(state(), DataImage::Decoding);
    screen.window().setProperty("address", "data:image/png;base64,AAAA");
    screen.waitUntil([&] { return state() == DataImage::Failed; });
    screen.window().setProperty("address", addressOf(picture(10, 10), "png", "png"));
    screen.waitUntil([&] { return state() == DataImage::Ready; });
    EXPECT_EQ(screen.window().grabWindow().pixelColor(50, 50), QColor(Qt::red));
    screen.window().setProperty("address", "");
    EXPECT_EQ(state(), DataImage::Empty);
    EXPECT_NE(screen.window().grabWindow().pixelColor(50, 50), QColor(Qt::red));
}

} // namespace
} // namespace palvera
