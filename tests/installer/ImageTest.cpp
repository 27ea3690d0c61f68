#include "installer/Image.h"
#include "installer/Settings.h"

#include "tests/installer/Support.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

#include <openssl/evp.h>

#include <fcntl.h>

namespace palvera::installer {
namespace {

class Publisher {
public:
    PublicKey publicKey() const
    {
        PublicKey raw(32, '\0');
        auto size = static_cast<std::size_t>(raw.size());
        EXPECT_EQ(EVP_PKEY_get_raw_public_key(m_key.get(), reinterpret_cast<unsigned char*>(raw.data()), &size), 1);
        return raw;
    }

    QByteArray sign(const QByteArray& message) const
    {
        const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
        QByteArray signature(64, '\0');
        auto size = static_cast<std::size_t>(signature.size());
        EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, m_key.get());
        EXPECT_EQ(EVP_DigestSign(context.get(), reinterpret_cast<unsigned char*>(signature.data()), &size,
                                 reinterpret_cast<const unsigned char*>(message.constData()),
                                 static_cast<std::size_t>(message.size())),
                  1);
        return signature;
    }

    QByteArray image(const QByteArray& manifest, const QByteArray& payload) const
    {
        QByteArray length(4, '\0');
        qToLittleEndian(static_cast<quint32>(manifest.size()), length.data());
        return "PVIMAGE1" + length + sign("palvera image 1\n" + manifest) + manifest + payload;
    }

private:
    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> m_key{EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519"),
                                                              EVP_PKEY_free};
};

const QByteArray payload = "what an update holds";

QJsonObject fields()
{
    const auto hash = QCryptographicHash::hash(payload, QCryptographicHash::Sha256).toHex();
    return {{"product", "palvera"},      {"system", "linux-x86_64"},
            {"version", "1.5"},          {"build", "58"},
            {"size", payload.size()},    {"sha256", QString::fromLatin1(hash)},
            {"unpackedSize", 114000000}, {"files", 546}};
}

QByteArray textOf(const QJsonObject& object)
{
    return QJsonDocument(object).toJson();
}

struct FieldCase {
    const char* name;
    QJsonValue value; // undefined leaves the field out
    bool isTaken = false;
};

void PrintTo(const FieldCase& field, std::ostream* out)
{
    *out << field.name << ' ' << textOf({{"value", field.value}}).toStdString();
}

class ManifestField : public testing::TestWithParam<FieldCase> {};

TEST_P(ManifestField, isOfItsTypeAndInItsRange)
{
    auto object = fields();
    if (GetParam().value.isUndefined())
        object.remove(GetParam().name);
    else
        object[GetParam().name] = GetParam().value;
    EXPECT_EQ(refusalOf([&] { readManifest(textOf(object)); }),
              GetParam().isTaken ? std::nullopt : std::optional(Refusal::damaged));
}

const QString longText = QString(64, 'x');
const QJsonValue missing(QJsonValue::Undefined);

INSTANTIATE_TEST_SUITE_P(Fields, ManifestField,
                         testing::ValuesIn(std::vector<FieldCase>{{"further", "field", true},
                                                                  {"product", missing},
                                                                  {"product", ""},
                                                                  {"product", 1},
                                                                  {"system", missing},
                                                                  {"system", true},
                                                                  {"version", longText, true},
                                                                  {"version", "1.5 β 𝟚", true},
                                                                  {"version", longText + 'x'},
                                                                  {"version", ""},
                                                                  {"version", "1\n5"},
                                                                  {"version", 1.5},
                                                                  {"build", "9223372036854775807", true},
                                                                  {"build", "9223372036854775808"},
                                                                  {"build", "0"},
                                                                  {"build", "-1"},
                                                                  {"build", "+58"},
                                                                  {"build", "058"},
                                                                  {"build", " 58"},
                                                                  {"build", "58a"},
                                                                  {"build", "٥٨"},
                                                                  {"build", ""},
                                                                  {"build", 58},
                                                                  {"build", missing},
                                                                  {"size", 1 << 30, true},
                                                                  {"size", (1 << 30) + 1LL},
                                                                  {"size", 0},
                                                                  {"size", -1},
                                                                  {"size", 1.5},
                                                                  {"size", "20"},
                                                                  {"sha256", QString(64, 'A'), true},
                                                                  {"sha256", QString(63, 'a')},
                                                                  {"sha256", QString(65, 'a')},
                                                                  {"sha256", QString(63, 'a') + 'g'},
                                                                  {"sha256", QString(66, ' ') + QString(64, 'a')},
                                                                  {"sha256", missing},
                                                                  {"unpackedSize", 4LL << 30, true},
                                                                  {"unpackedSize", (4LL << 30) + 1},
                                                                  {"unpackedSize", -1},
                                                                  {"files", 100'000, true},
                                                                  {"files", 100'001},
                                                                  {"files", 0},
                                                                  {"files", QJsonArray{1}}}));

struct ImageCase {
    const char* name;
    std::function<QByteArray(const Publisher& ours, const Publisher& other)> make;
    std::optional<Refusal> refusal;
};

void PrintTo(const ImageCase& each, std::ostream* out)
{
    *out << each.name;
}

class ImageBounds : public testing::TestWithParam<ImageCase> {};

TEST_P(ImageBounds, areJudgedBeforeAnythingIsUnpacked)
{
    const Publisher ours, other;
    const auto file = memoryFile(GetParam().make(ours, other));
    EXPECT_EQ(refusalOf([&] {
                  const Image image(file, {ours.publicKey()});
                  const auto copy = memoryFile({});
                  image.copyPayloadTo(copy);
                  EXPECT_EQ(contentOf(copy), payload);
              }),
              GetParam().refusal);
}

QByteArray good(const Publisher& publisher)
{
    return publisher.image(textOf(fields()), payload);
}

INSTANTIATE_TEST_SUITE_P(
    Images, ImageBounds,
    testing::ValuesIn(std::vector<ImageCase>{
        {"good", [](auto& ours, auto&) { return good(ours); }, std::nullopt},
        {"other key", [](auto&, auto& other) { return good(other); }, Refusal::notSigned},
        {"other build in the manifest", [](auto& ours, auto&) { return good(ours).replace("\"58\"", "\"99\""); },
         Refusal::notSigned},
        {"a signature without the prefix",
         [](auto& ours, auto&) { return good(ours).replace(12, 64, ours.sign(textOf(fields()))); }, Refusal::notSigned},
        {"signed, but no manifest", [](auto& ours, auto&) { return ours.image("[]", payload); }, Refusal::damaged},
        {"signed, but of nothing", [](auto& ours, auto&) { return ours.image("", payload); }, Refusal::damaged},
        {"other payload of the same size", [](auto& ours, auto&) { return good(ours).chopped(1) + 'x'; },
         Refusal::damaged},
        {"cut in the payload", [](auto& ours, auto&) { return good(ours).chopped(1); }, Refusal::incomplete},
        {"cut in the manifest", [](auto& ours, auto&) { return good(ours).first(100); }, Refusal::incomplete},
        {"cut in the header", [](auto& ours, auto&) { return good(ours).first(75); }, Refusal::damaged},
        {"bytes behind the end", [](auto& ours, auto&) { return good(ours) + 'x'; }, Refusal::damaged},
        {"other magic", [](auto& ours, auto&) { return good(ours).replace("IMAGE1", "IMAGE2"); }, Refusal::damaged},
        {"a manifest of 4 GiB", [](auto& ours, auto&) { return good(ours).replace(8, 4, "\xff\xff\xff\xff"); },
         Refusal::damaged},
        {"a manifest above its limit",
         [](auto& ours, auto&) { return ours.image(textOf(fields()) + QByteArray(64 << 10, ' '), payload); },
         Refusal::damaged},
        {"empty", [](auto&, auto&) { return QByteArray(); }, Refusal::damaged}}));

TEST(ImageTest, isSignedByAnyOfTheKeys)
{
    const Publisher present, next;
    const QList<PublicKey> keys{present.publicKey(), next.publicKey()};
    for (const auto* publisher : {&present, &next})
        EXPECT_EQ(Image(memoryFile(good(*publisher)), keys).manifest().build, 58);
    EXPECT_EQ(refusalOf([&] { Image(memoryFile(good(present)), {}); }), Refusal::notSigned) << "no key, no image";
}

TEST(SettingsTest, rootIsToldNothingButATask)
{
    const QStringList task{"--worker", "prepare", "/opt/palvera", "1.5", "58"};
    const QStringList key{"--key", QString(64, 'a')};
    EXPECT_EQ(readSettings(task, true, "/opt/palvera")->task->announced.build, "58");
    for (const QStringList& words : {key, task + key, QStringList{"--session"}, QStringList{"--root", "/etc"}})
        EXPECT_FALSE(readSettings(words, true, "/opt/palvera")) << words.join(' ').toStdString();
    const auto settings = readSettings(task + key, false, "/opt/palvera");
    EXPECT_EQ(settings->keys, QList<PublicKey>{PublicKey(32, '\xaa')});
    EXPECT_EQ(readSettings(wordsOf(*settings->task) + settings->forWorker, false, "/opt/palvera")->keys,
              settings->keys);
    for (const QStringList& words : {QStringList{"--key", "aa"},
                                     {"--root"},
                                     {"--root", "here"},
                                     {"--patience", "0"},
                                     {"--worker", "prepare", "/opt/palvera", "1.5"},
                                     {"--else", "x"}})
        EXPECT_FALSE(readSettings(words, false, "/opt/palvera")) << words.join(' ').toStdString();
}

} // namespace
} // namespace palvera::installer
