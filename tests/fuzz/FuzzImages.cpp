#include "Require.h"

#include "controls/DataImage.h"

// The picture of an authenticator's key, as the platform sends it: its first byte says as what it is announced.
void palvera::check(const QByteArray& input)
{
    static const QByteArrayList kinds{"image/png", "image/jpeg", "image/gif", "image/svg+xml", "text/plain"};
    const auto& kind = kinds[uchar(input.front()) % kinds.size()];
    const auto bytes = input.sliced(1);
    for (const auto& address : {"data:" + kind + ";base64," + bytes.toBase64(), "data:" + kind + ',' + bytes}) {
        const auto image = DataImage::decode(QString::fromLatin1(address));
        require(image.width() <= DataImage::longestSide && image.height() <= DataImage::longestSide, "it has a size");
    }
}
