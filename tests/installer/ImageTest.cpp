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

TEST(ManifestTest, eachFieldIsOfItsTypeAndInItsRange)
{
    const QString longest(64, 'x');
    const QJsonValue missing(QJsonValue::Undefined);
    const std::tuple<const char*, QList<QJsonValue>, QList<QJsonValue>> cases[]{
        // what is taken, and what is refused; undefined leaves the field out
        {"further", {"field"}, {}},
        {"product", {}, {missing, ""}},
        {"system", {}, {missing}},
        {"version", {longest, "1.5 β 𝟚"}, {longest + 'x', "1\n5", missing}},
        {"build", {"9223372036854775807"}, {"9223372036854775808", "0", "-1", "+58", "058", " 58", "58a", "٥٨", 58}},
        {"size", {1 << 30}, {(1 << 30) + 1LL, 0, -1, 1.5, missing}},
        {"sha256",
         {QString(64, 'A')},
         {QString(63, 'a'), QString(65, 'a'), QString(63, 'a') + 'g', QString(66, ' ') + QString(64, 'a')}},
        {"unpackedSize", {4LL << 30}, {(4LL << 30) + 1, 0}},
        {"files", {100'000}, {100'001, 0}}};
    for (const auto& [name, taken, refused] : cases) {
        for (const auto& value : taken + refused) {
            auto object = fields();
            object.remove(name);
            if (!value.isUndefined())
                object[name] = value;
            const auto expected = taken.contains(value) ? std::nullopt : std::optional(Refusal::damaged);
            EXPECT_EQ(refusalOf([&] { readManifest(textOf(object)); }), expected) << textOf(object).toStdString();
        }
    }
}

QByteArray good(const Publisher& publisher)
{
    return publisher.image(textOf(fields()), payload);
}

TEST(ImageTest, isJudgedBeforeAnythingIsUnpacked)
{
    const Publisher ours, other;
    const auto whole = good(ours);
    const auto changed = [&](const char* before, const char* after) {
        return QByteArray(whole).replace(before, after);
    };
    const std::tuple<const char*, QByteArray, std::optional<Refusal>> cases[]{
        {"good", whole, std::nullopt},
        {"other key", good(other), Refusal::notSigned},
        {"other build in the manifest", changed("\"58\"", "\"99\""), Refusal::notSigned},
        {"a signature without the prefix", QByteArray(whole).replace(12, 64, ours.sign(textOf(fields()))),
         Refusal::notSigned},
        {"signed, but no manifest", ours.image("[]", payload), Refusal::damaged},
        {"other payload of the same size", whole.chopped(1) + 'x', Refusal::damaged},
        {"cut in the payload", whole.chopped(1), Refusal::incomplete},
        {"cut in the manifest", whole.first(100), Refusal::incomplete},
        {"cut in the header", whole.first(75), Refusal::damaged},
        {"bytes behind the end", whole + 'x', Refusal::damaged},
        {"a manifest of 4 GiB", QByteArray(whole).replace(8, 4, "\xff\xff\xff\xff"), Refusal::damaged},
        {"other magic", changed("IMAGE1", "IMAGE2"), Refusal::damaged},
        {"a manifest above its limit", ours.image(textOf(fields()) + QByteArray(64 << 10, ' '), payload),
         Refusal::damaged}};
    for (const auto& [name, bytes, refusal] : cases) {
        const auto judge = [&] {
            const auto file = memoryFile(bytes), copy = memoryFile({});
            Image(file, {ours.publicKey()}).copyPayloadTo(copy);
            EXPECT_EQ(contentOf(copy), payload);
        };
        EXPECT_EQ(refusalOf(judge), refusal) << name;
    }
}

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
