#include "service/AssetRecords.h"
#include "service/BinRecords.h"
#include "service/InternetDate.h"
#include "service/Organisations.h"
#include "service/SignInRecords.h"
#include "support/Json.h"
#include "support/QtPrinting.h"

#include <limits>

namespace palvera {
namespace {

TEST(RecordsTest, whatIsNeededMustBeThereAndOfItsType)
{
    const std::tuple<std::string (*)(const QByteArray&), const char*, const char*> cases[] = {
        {faultIn<Orgs>, R"({"orgs":[{"id":"o","name":"N"},{"id":"o"}]})", "orgs[1].name: “name” is missing."},
        {faultIn<Orgs>, R"({"orgs":[{"id":"o","name":"N"},3]})", "orgs[1]: “orgs[1]” is not what it should be."},
        {faultIn<Orgs>, R"({"orgs":{}})", "orgs: “orgs” is not what it should be."},
        {faultIn<Org>, R"({"id":"o","name":"N","slug":1})", "slug: “slug” is not what it should be."},
        {faultIn<Projects>, R"({"projects":[{"id":1,"name":"N"}]})", "projects[0].id: “id” is not what it should be."},
        {faultIn<Project>, R"({"id":"p"})", "name: “name” is missing."},
        {faultIn<Deliverables>, R"({"deliverables":[{"id":"d"},{}]})", "deliverables[1].id: “id” is missing."},
        {faultIn<OrgAssetFile>, R"({"key":"k"})", "rowId: “rowId” is missing."},
        {faultIn<OrgAssetFile>, R"({"rowId":"r"})", "key: “key” is missing."},
        {faultIn<OrgAssetRow>, R"({"id":"d"})", "projectId: “projectId” is missing."},
        {faultIn<OrgAssetsPage>, R"({"rows":[],"total":0,"page":1,"pageSize":60})", "files: “files” is missing."},
        {faultIn<OrgAssetsPage>, R"({"files":[],"total":0,"page":1,"pageSize":60})", "rows: “rows” is missing."},
        {faultIn<BinObject>, R"({"name":"n"})", "key: “key” is missing."},
        {faultIn<BinPage>, R"({"folders":[]})", "objects: “objects” is missing."},
        {faultIn<BinPage>, R"({"objects":[],"nextCursor":1})", "nextCursor: “nextCursor” is not what it should be."},
        {faultIn<BinDownload>, R"({"filename":"f"})", "url: “url” is missing."},
        {faultIn<SignedURL>, R"({"url":null})", "url: “url” is missing."},
        {faultIn<Me>, R"({"user":{"id":"u"}})", "user.email: “email” is missing."},
        {faultIn<SignedIn>, R"({"user":null})", "user: “user” is missing."},
        {faultIn<AuthConfig>, R"({"devAuth":true})", "workos: “workos” is missing."},
        {faultIn<SignInStep>, R"({"next":"sso"})", "url: The single sign-on step named no address."},
        {faultIn<SignInStep>, R"({"next":"sso","url":"here"})", "url: The single sign-on step named no address."},
        {faultIn<SignInStep>, R"({"next":"sso","url":1})", "url: “url” is not what it should be."},
        {faultIn<SignInStep>, R"({"next":"dance"})", "next: An unknown sign-in step: dance."},
        {faultIn<SignInStep>, R"({"next":null})", "next: An unknown sign-in step: none."},
        {faultIn<SignInStep>, R"({"next":"enrol_totp","qrCode":"q"})", "secret: “secret” is missing."},
    };
    for (const auto& [faultIn, text, fault] : cases)
        EXPECT_EQ(faultIn(text), fault) << text;
}

TEST(RecordsTest, theRestMayBeMissingAndInTheListingsOfAnyType)
{
    EXPECT_EQ(decoded<Deliverable>(R"({"id":"d","family":1,"kind":null,"label":[],"status":{},"language":2,
        "territory":true,"purpose":null,"titleName":[],"episodeCode":5,"showName":{},"level":1,"seasonNumber":"2",
        "episodeNumber":1.5,"spec":"text"})"),
              Deliverable{.id = "d"});
    EXPECT_EQ(decoded<OrgAssetFile>(R"({"key":"k","rowId":"r","object":1,"filename":2,"label":[],"family":null,
        "byteSize":"x","deliveredAt":{}})"),
              (OrgAssetFile{.key = "k", .rowId = "r"}));
    EXPECT_EQ(decoded<OrgAssetRow>(R"({"id":"d","projectId":"p","projectName":1,"projectReference":2})"),
              (OrgAssetRow{.deliverable = {.id = "d"}, .projectId = "p"}));
    EXPECT_EQ(decoded<BinObject>(R"({"key":"k","name":1,"size":[],"contentType":1,"updatedAt":2,"family":{},
        "previewUrl":false})"),
              (BinObject{.key = "k", .name = "k"}));
    EXPECT_EQ(decoded<BinPage>(R"({"objects":[],"folders":null})"), BinPage{});
    EXPECT_EQ(decoded<BinDownload>(R"({"url":"u"})"), BinDownload{.url = "u"});
    EXPECT_EQ(decoded<Me>(R"({"user":{"id":"u","email":"e"}})"), (Me{.user = {.id = "u", .email = "e"}}));
    EXPECT_EQ(decoded<AuthConfig>(R"({"devAuth":true,"workos":false})"), (AuthConfig{.devAuth = true}));
}

TEST(RecordsTest, whatIsThereIsReadFromItsOwnMember)
{
    EXPECT_EQ(decoded<Deliverable>(R"({"id":"d","spec":{"a":"1","b":2,"c":null,"d":true,"e":[],"f":{},"":"g"}})").spec,
              (QMap<QString, QString>{{"a", "1"}, {"", "g"}}))
        << "of a specification the texts alone";
    EXPECT_EQ(decoded<OrgAssetFile>(R"({"key":"k","rowId":"r","object":"o","filename":"f","label":"l","family":"v",
        "byteSize":"7","deliveredAt":"d"})"),
              (OrgAssetFile{"k", "r", "o", "f", "l", "v", 7, "d"}));
    EXPECT_EQ(decoded<OrgAssetRow>(R"({"id":"d","projectId":"p","projectName":"P","projectReference":"R"})"),
              (OrgAssetRow{{.id = "d"}, "p", "P", "R"}));
    EXPECT_EQ(decoded<OrgAssetsPage>(R"({"files":[],"rows":[],"total":120,"page":1,"pageSize":60})"),
              (OrgAssetsPage{{}, {}, 120, 1, 60}));
    EXPECT_EQ(decoded<BinObject>(R"({"key":"k","name":"n","size":"7","contentType":"t","updatedAt":"u","family":"f",
        "previewUrl":"p"})"),
              (BinObject{"k", "n", 7, "t", "u", "f", "p"}));
    EXPECT_EQ(decoded<BinPage>(R"({"objects":[],"folders":["a","b"],"nextCursor":"c"})"),
              (BinPage{{}, QList<QString>{"a", "b"}, "c"}));
    EXPECT_EQ(decoded<BinDownload>(R"({"url":"u","filename":"f","expiresInSeconds":60})"), (BinDownload{"u", "f", 60}));
    EXPECT_EQ(decoded<SignedIn>(R"({"user":{"id":"u","email":"e","name":"N"}})").user, (User{"u", "e", "N"}));
    EXPECT_EQ(decoded<AuthConfig>(R"({"devAuth":false,"workos":true,"environment":"qa","social":["google"]})"),
              (AuthConfig{false, true, "qa", QList<QString>{"google"}}));
}

/// What was read is written for other programs as it came.
template <class Record>
void expectPassedOn(const QByteArray& text)
{
    EXPECT_EQ(decoded<Record>(text).toJson(), jsonObject(text)) << text.toStdString();
}

TEST(RecordsTest, whatIsPassedOnIsWhatCame)
{
    expectPassedOn<Org>(R"({"id":"o","name":"N"})");
    expectPassedOn<Org>(R"({"id":"o","name":"N","slug":""})");
    expectPassedOn<Project>(R"({"id":"p","name":"N","reference":"r","status":"open"})");
    expectPassedOn<Deliverable>(R"({"id":"d","family":"","kind":"","label":"","status":""})");
    expectPassedOn<Deliverable>(R"({"id":"d","family":"f","kind":"k","label":"l","status":"s","language":"la",
        "territory":"te","purpose":"pu","titleName":"ti","episodeCode":"ec","showName":"sh","level":"episode",
        "seasonNumber":2,"episodeNumber":5,"spec":{"a":"b"}})");
}

TEST(RecordsTest, anObjectOfTheBinIsNamedByThePlatformOrItsKey)
{
    const std::pair<const char*, const char*> cases[] = {
        {R"({"key":"a/b","name":"N"})", "N"}, {R"({"key":"a/b","name":""})", ""}, {R"({"key":"a/b","name":null})", "b"},
        {R"({"key":"a/b/c.mov"})", "c.mov"},  {R"({"key":"a/b/"})", "b"},         {R"({"key":""})", ""},
    };
    for (const auto& [text, name] : cases)
        EXPECT_EQ(decoded<BinObject>(text).name, name) << text;
}

TEST(InternetDateTest, isReadWithAndWithoutAFractionAndNeverWithoutAZone)
{
    const auto utc = [](int milliseconds) { return QDateTime({2026, 1, 31}, {12, 30, 5, milliseconds}, Qt::UTC); };
    const std::pair<const char*, std::optional<QDateTime>> cases[] = {
        {"2026-01-31T12:30:05Z", utc(0)},          {"2026-01-31T12:30:05.25Z", utc(250)},
        {"2026-01-31T12:30:05.123456Z", utc(123)}, {"2026-01-31T14:30:05+02:00", utc(0)},
        {"2026-01-31T11:00:05.007-01:30", utc(7)},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(parseInternetDate(text), expected) << text;
    for (const char* none : {"2026-02-31T12:30:05Z", "2026-01-31T25:30:05Z", "2026-01-31T12:30:05",
                             "2026-01-31 12:30:05Z", "2026-01-31", ""})
        EXPECT_EQ(parseInternetDate(none), std::nullopt) << none;
    const QString moment = "2026-01-31T12:30:05Z";
    EXPECT_EQ((OrgAssetFile{.key = "k", .rowId = "r", .deliveredAt = moment}).deliveredDate(), utc(0));
    EXPECT_EQ((BinObject{.key = "k", .name = "k", .updatedAt = moment}).updatedDate(), utc(0));
}

TEST(RecordsTest, anAddressSignsInBySsoOrElseByPassword)
{
    const std::pair<MethodAnswer, Method> cases[] = {
        {{"sso", "https://idp.example/login?a=%2F"}, SsoMethod{"https://idp.example/login?a=%2F"}},
        {{"sso", {}}, PasswordMethod{}},
        {{"sso", "javascript:alert(1)"}, PasswordMethod{}},
        {{"password", "https://idp.example"}, PasswordMethod{}},
    };
    for (const auto& [answer, expected] : cases)
        EXPECT_EQ(methodFrom(answer), expected) << answer.method.toStdString();
}

TEST(RecordsTest, aStepOfASignInSaysWhatComesNext)
{
    const std::pair<const char*, SignInStep> cases[] = {
        {R"({"user":{"id":"u","email":"e"}})", {SignInStep::SignedIn{}}},
        {R"({"user":null,"next":"totp"})", {SignInStep::SignedIn{}}},
        {R"({"next":"verify_email"})", {SignInStep::VerifyEmail{}}},
        {R"({"next":"totp"})", {SignInStep::Totp{}}},
        {R"({"next":"enrol_totp","qrCode":"q","secret":"s"})", {SignInStep::EnrolTotp{"q", "s"}}},
        {R"({"next":"sso","url":"https://idp.example/x"})", {SignInStep::Sso{"https://idp.example/x"}}},
    };
    for (const auto& [text, step] : cases)
        EXPECT_EQ(decoded<SignInStep>(text), step) << text;
}

constexpr qint64 most = std::numeric_limits<qint64>::max();
constexpr qint64 least = std::numeric_limits<qint64>::min();

TEST(JsonReaderTest, anIntegerHasNoFractionAndFits64Bits)
{
    using Integer = std::optional<qint64>;
    const std::tuple<const char*, Integer, Integer> cases[] = {
        // the second may also be written as a text
        {"2.0", 2, 2},
        {"9007199254740993", 9007199254740993, 9007199254740993},
        {"9223372036854775807", most, most},
        {"-9223372036854775808", least, least},
        {"\"+5\"", {}, 5},
        {"\"9223372036854775807\"", {}, most},
        {"\"-9223372036854775808\"", {}, least},
    };
    for (const auto& [value, integer, byteCount] : cases) {
        const auto object = jsonObject("{\"n\":" + QByteArray(value) + '}');
        EXPECT_EQ(JsonReader(object).lenient<qint64>("n"), integer) << value;
        EXPECT_EQ(JsonReader(object).byteCount("n"), byteCount) << value;
        EXPECT_EQ(JsonReader(jsonObject(QJsonDocument(object).toJson())).byteCount("n"), byteCount)
            << value << " written and read again";
    }
    for (const char* none :
         {"2.5", "9223372036854775808", "-9223372036854777857", "1e300", "true", "null", "[1]", "{}"})
        EXPECT_EQ(JsonReader(jsonObject("{\"n\":" + QByteArray(none) + '}')).byteCount("n"), std::nullopt) << none;
    for (const char* none :
         {"", "-", "--1", "12a", " 12", "12 ", "1.0", "1e3", "0x10", "1,000", "٣", "9223372036854775808"})
        EXPECT_EQ(json::parseInteger(none), std::nullopt) << none;
}

TEST(JsonReaderTest, aDocumentIsOneObject)
{
    EXPECT_EQ(json::parseObject("{\"a\":1}").size(), 1);
    for (const char* bytes : {"", "[]", "[{}]", "1", "null", "{", "{} {}", "{\"a\":\"\xff\"}", "<html>"})
        EXPECT_THROW(json::parseObject(bytes), DecodingError) << bytes;
    const auto nested = [](int levels) {
        return QByteArray("{\"a\":") + QByteArray(levels, '[') + QByteArray(levels, ']') + '}';
    };
    const auto listed = [](int values) {
        return QByteArray("{\"a\\\"[\":[1") + QByteArray(",1").repeated(values - 1) + "]}";
    };
    EXPECT_EQ(json::parseObject(nested(63)).size(), 1);
    EXPECT_EQ(json::parseObject(listed(1'999'000)).size(), 1);
    for (const auto& bytes : {nested(64), nested(1'000'000), listed(2'000'001)})
        EXPECT_THROW(json::parseObject(bytes), DecodingError);
}

TEST(DeliverableTest, contextLineNamesShowPlaceAndTitle)
{
    using Text = std::optional<QString>;
    using Number = std::optional<qint64>;
    using Place = std::tuple<Text, Text, Text, Text, Number, Number>; // level, show, title, code, season, episode
    const std::pair<Place, Text> cases[] = {
        // Anything but an episode or a season: its title.
        {{{}, {}, {}, {}, {}, {}}, {}},
        {{{}, "Show", "Title", {}, 1, 2}, "Title"},
        {{"feature", "Show", {}, {}, {}, {}}, "Show"},
        // An episode.
        {{"episode", "Show", "Title", "X", 1, 3}, "Show · S1 E3 · Title"},
        {{"episode", "Show", "Title", "X", 0, 3}, "Show · Extras · Title"},
        {{"episode", "Show", "Show", "X", 2, 5}, "Show · S2 E5"},
        {{"episode", "Show", "Title", "X", 1, {}}, "Show · X · Title"},
        {{"episode", "Show", "Title", "X", {}, 3}, "Show · X · Title"},
        {{"episode", "Show", "Title", {}, {}, {}}, "Show · Title"},
        {{"episode", {}, "Title", "X", {}, {}}, "Title · X"},
        {{"episode", {}, {}, {}, 1, 0}, "S1 E0"},
        {{"episode", {}, {}, {}, {}, {}}, {}},
        // A season.
        {{"season", "Show", "Title", "X", 4, 3}, "Show · Season 4"},
        {{"season", "Show", "Title", {}, 0, {}}, "Show · Extras"},
        {{"season", {}, "Title", {}, {}, {}}, "Title"},
        {{"season", {}, {}, "X", {}, 2}, {}},
    };
    for (const auto& [place, line] : cases) {
        Deliverable row{.id = "d"};
        std::tie(row.level, row.showName, row.titleName, row.episodeCode, row.seasonNumber, row.episodeNumber) = place;
        EXPECT_EQ(row.contextLine(), line) << line.value_or("none").toStdString();
    }
}

TEST(DeliverableTest, expectsTheBytesOfItsSpecification)
{
    const auto expected = [](const char* spec) { return decoded<Deliverable>(spec).expectedBytes(); };
    EXPECT_EQ(expected(R"({"id":"d","spec":{"assetBytes":"5000000000"}})"), 5'000'000'000);
    EXPECT_EQ(expected(R"({"id":"d","spec":{"assetBytes":"4 GB"}})"), std::nullopt);
    EXPECT_EQ(expected(R"({"id":"d"})"), std::nullopt);
}

} // namespace
} // namespace palvera
