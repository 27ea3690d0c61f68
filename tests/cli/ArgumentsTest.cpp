#include "cli/Arguments.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera::cli {

using namespace Qt::StringLiterals;

namespace {

using testing::HasSubstr;

std::variant<Invocation, TextAnswer> read(const QStringList& words)
{
    return readArguments(words, QStringLiteral("1.2.3"));
}

QStringList words(const char* line)
{
    return QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts);
}

std::string answerTo(const char* line)
{
    auto answer = read(words(line));
    auto* text = std::get_if<TextAnswer>(&answer);
    return text ? text->text.toStdString() : "(a command)";
}

struct Understood {
    const char* line;
    Command command;
    bool json = false;
};

void PrintTo(const Understood& understood, std::ostream* out)
{
    *out << understood.line;
}

class UnderstoodArguments : public testing::TestWithParam<Understood> {};

TEST_P(UnderstoodArguments, makeACommand)
{
    auto asked = read(words(GetParam().line));
    ASSERT_TRUE(std::holds_alternative<Invocation>(asked)) << std::get<TextAnswer>(asked).text.toStdString();
    EXPECT_EQ(std::get<Invocation>(asked).command, GetParam().command);
    EXPECT_EQ(std::get<Invocation>(asked).json, GetParam().json);
}

INSTANTIATE_TEST_SUITE_P(
    All, UnderstoodArguments,
    testing::Values(
        Understood{"sign-in --email ada@x.example", SignIn{.email = u"ada@x.example"_s}},
        Understood{"sign-in --password-stdin --email e", SignIn{.email = u"e"_s, .passwordFromStdin = true}},
        Understood{"sign-out", SignOut{}}, Understood{"whoami", WhoAmI{}}, Understood{"site", ChooseSite{}},
        Understood{"site live", ChooseSite{.site = Site::live}}, Understood{"site qa", ChooseSite{.site = Site::qa}},
        Understood{"orgs", ListOrgs{}}, Understood{"--json orgs", ListOrgs{}, true},
        Understood{"orgs --json", ListOrgs{}, true}, Understood{"projects o", ListProjects{.org = u"o"_s}},
        Understood{"deliverables o p", ListDeliverables{.org = u"o"_s, .project = u"p"_s}},
        Understood{"sign-in --email e --code 123456", SignIn{.email = u"e"_s, .code = u"123456"_s}},
        Understood{"assets o", ListAssets{.org = u"o"_s}},
        Understood{"assets o --search reel --family video",
                   ListAssets{.org = u"o"_s, .search = u"reel"_s, .family = u"video"_s}},
        Understood{"bin o", ListBin{.org = u"o"_s}},
        Understood{"bin --folder=a/b o --search t", ListBin{.org = u"o"_s, .folder = u"a/b"_s, .search = u"t"_s}},
        Understood{"upload o p d f",
                   UploadFile{.org = u"o"_s, .project = u"p"_s, .deliverable = u"d"_s, .file = u"f"_s}},
        Understood{
            "upload o p d f --confirmed --json",
            UploadFile{.org = u"o"_s, .project = u"p"_s, .deliverable = u"d"_s, .file = u"f"_s, .confirmed = true},
            true},
        Understood{"upload -- o p d -f",
                   UploadFile{.org = u"o"_s, .project = u"p"_s, .deliverable = u"d"_s, .file = u"-f"_s}},
        Understood{"upload-bin o a b", UploadToBin{.org = u"o"_s, .files = {u"a"_s, u"b"_s}}},
        Understood{"upload-bin o --folder x a b",
                   UploadToBin{.org = u"o"_s, .files = {u"a"_s, u"b"_s}, .folder = u"x"_s}},
        Understood{"upload-bin o [a,b] é%20",
                   UploadToBin{.org = u"o"_s, .files = {u"[a,b]"_s, QStringLiteral("é%20")}}},
        Understood{"download o p d", DownloadFiled{.org = u"o"_s, .project = u"p"_s, .deliverable = u"d"_s}},
        Understood{"download o p d --to x",
                   DownloadFiled{.org = u"o"_s, .project = u"p"_s, .deliverable = u"d"_s, .folder = u"x"_s}},
        Understood{"download-bin o a/b [c,d] --to=x",
                   DownloadFromBin{.org = u"o"_s, .keys = {u"a/b"_s, u"[c,d]"_s}, .folder = u"x"_s}},
        Understood{"downloads-folder", DownloadsFolder{}},
        Understood{"downloads-folder x", DownloadsFolder{.folder = u"x"_s}},
        Understood{"interrupted", ListInterrupted{}}, Understood{"resume k", ResumeUploads{.key = u"k"_s}},
        Understood{"resume --all", ResumeUploads{}}, Understood{"discard k", DiscardUpload{.key = u"k"_s}}));

struct Misunderstood {
    const char* line;
    const char* reason;
};

void PrintTo(const Misunderstood& misunderstood, std::ostream* out)
{
    *out << misunderstood.line;
}

class MisunderstoodArguments : public testing::TestWithParam<Misunderstood> {};

TEST_P(MisunderstoodArguments, areAnsweredWithWhatIsWrong)
{
    auto answer = read(words(GetParam().line));
    ASSERT_TRUE(std::holds_alternative<TextAnswer>(answer));
    EXPECT_TRUE(std::get<TextAnswer>(answer).isError);
    EXPECT_THAT(answerTo(GetParam().line), HasSubstr(GetParam().reason));
    EXPECT_THAT(answerTo(GetParam().line), HasSubstr("\nTry: palvera-cli"));
}

INSTANTIATE_TEST_SUITE_P(
    All, MisunderstoodArguments,
    testing::Values(Misunderstood{"", "A command is required"}, Misunderstood{"--json", "A command is required"},
                    Misunderstood{"fetch", "There is no command “fetch”"}, Misunderstood{"sign-in", "--email"},
                    Misunderstood{"site prod", "prod"}, Misunderstood{"projects", "ORG"},
                    Misunderstood{"projects a b", "b"}, Misunderstood{"orgs --loud", "--loud"},
                    Misunderstood{"upload o p d", "FILE"}, Misunderstood{"upload-bin o", "FILE"},
                    Misunderstood{"resume", "KEY or --all is required"}, Misunderstood{"resume k --all", "excludes"},
                    Misunderstood{"resume k --retry maybe", "retry"}, Misunderstood{"download o p", "DELIVERABLE"},
                    Misunderstood{"download-bin o --to x", "KEY"},
                    Misunderstood{"download o p d --retry off", "--retry"}, Misunderstood{"discard", "KEY"},
                    Misunderstood{"orgs projects o", "projects"},
                    Misunderstood{"bin o --search a --search b", "--search"}));

TEST(Arguments, sayHowTransfersGo)
{
    auto options = [](const char* line) {
        auto asked = std::get<Invocation>(read(words(line)));
        return std::pair(asked.retry, asked.stopOnInterrupt);
    };
    EXPECT_EQ(options("upload o p d f"), std::pair(true, false));
    EXPECT_EQ(options("upload o p d f --retry off --stop-on-interrupt"), std::pair(false, true));
    EXPECT_EQ(options("upload-bin o f --retry=off"), std::pair(false, false));
    EXPECT_EQ(options("resume --all --retry on"), std::pair(true, false));
}

TEST(Arguments, takeTheWordsAsTheyAre)
{
    auto asked = read({u"upload"_s, u"org harbour"_s, u"p/100%?#1"_s, u""_s, u"a \"b\".mov"_s});
    EXPECT_EQ(std::get<Invocation>(asked).command,
              Command(UploadFile{
                  .org = u"org harbour"_s, .project = u"p/100%?#1"_s, .deliverable = {}, .file = u"a \"b\".mov"_s}));
}

TEST(Arguments, offerHelpForTheProgramAndForEachCommand)
{
    EXPECT_THAT(answerTo("--help"), HasSubstr("Exit status"));
    EXPECT_THAT(answerTo("--help"), HasSubstr("upload-bin"));
    EXPECT_THAT(answerTo("upload --help"), HasSubstr("--confirmed"));
    EXPECT_THAT(answerTo("upload --help"), HasSubstr("ORG PROJECT DELIVERABLE FILE"));
    EXPECT_EQ(answerTo("--version"), "palvera-cli 1.2.3\n");
    EXPECT_FALSE(std::get<TextAnswer>(read({u"--help"_s})).isError);
}

TEST(Arguments, keepTheTerminalSafeFromTheUsersOwnWords)
{
    auto answer = read({QStringLiteral("\x1b[2Jboo")});
    EXPECT_FALSE(std::get<TextAnswer>(answer).text.contains(u'\x1b'));
}

} // namespace

} // namespace palvera::cli
