#include "cli/Arguments.h"

#include "support/QtPrinting.h"

namespace palvera::cli {

namespace {

using testing::HasSubstr;

auto read(const char* line)
{
    return readArguments(QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts), QStringLiteral("1.2.3"));
}

std::string answerTo(const char* line)
{
    auto answer = read(line);
    auto* text = std::get_if<TextAnswer>(&answer);
    return text ? text->text.toStdString() : "(a command)";
}

TEST(Arguments, makeACommand)
{
    const std::pair<const char*, Invocation> cases[] = {
        {"sign-in --password-stdin --email e", {SignIn{.email = "e", .passwordFromStdin = true}}},
        {"sign-in --email e --code 123456", {SignIn{.email = "e", .code = "123456"}}},
        {"sign-in --web", {SignIn{.inBrowser = true}}},
        {"sign-in --passkey", {SignIn{.withPasskey = true}}},
        {"sign-in --web --email e", {SignIn{.email = "e", .inBrowser = true}}},
        {"sign-out", {SignOut{}}},
        {"whoami", {WhoAmI{}}},
        {"site", {ChooseSite{}}},
        {"site live", {ChooseSite{Site::live}}},
        {"--json orgs", {ListOrgs{}, true}},
        {"orgs --json", {ListOrgs{}, true}},
        {"projects o", {ListProjects{"o"}}},
        {"deliverables o p", {ListDeliverables{"o", "p"}}},
        {"assets o --search reel --family video", {ListAssets{.org = "o", .search = "reel", .family = "video"}}},
        {"bin --folder=a/b o --search t", {ListBin{.org = "o", .folder = "a/b", .search = "t"}}},
        {"upload o p d f", {UploadFile{"o", "p", "d", "f"}}},
        {"upload o p d f --confirmed --json", {UploadFile{"o", "p", "d", "f", true}, true}},
        {"upload -- o p d -f", {UploadFile{"o", "p", "d", "-f"}}},
        {"upload o p/100%?#1 d a\"b\".mov", {UploadFile{"o", "p/100%?#1", "d", "a\"b\".mov"}}},
        {"upload o p d f --retry off --stop-on-interrupt", {UploadFile{"o", "p", "d", "f"}, false, false, true}},
        {"upload-bin o --folder x a b", {UploadToBin{"o", {"a", "b"}, "x"}}},
        {"upload-bin o [a,b] é%20 --retry=off", {UploadToBin{"o", {"[a,b]", "é%20"}}, false, false}},
        {"download o p d", {DownloadFiled{"o", "p", "d"}}},
        {"download o p d --to x", {DownloadFiled{"o", "p", "d", "x"}}},
        {"download-bin o a/b [c,d] --to=x", {DownloadFromBin{"o", {"a/b", "[c,d]"}, "x"}}},
        {"downloads-folder x", {DownloadsFolder{"x"}}},
        {"limit", {LimitLine{}}},
        {"limit --up 20 --down off --hours 22:00-06:00", {LimitLine{20'000'000, 0, "22:00-06:00"}}},
        {"limit --hours always", {LimitLine{.hours = "always"}}},
        {"download o p d --limit-rate 0.5", {.command = DownloadFiled{"o", "p", "d"}, .limitRate = 500'000}},
        {"resume k --limit-rate off", {.command = ResumeUploads{"k"}, .limitRate = 0}},
        {"interrupted", {ListInterrupted{}}},
        {"resume k", {ResumeUploads{"k"}}},
        {"resume --all --retry on", {ResumeUploads{}}},
        {"discard k", {DiscardUpload{"k"}}},
    };
    for (const auto& [line, asked] : cases) {
        const auto understood = read(line);
        ASSERT_TRUE(std::holds_alternative<Invocation>(understood)) << answerTo(line);
        EXPECT_EQ(std::get<Invocation>(understood), asked) << line;
    }
    const auto words = readArguments({"upload", "org harbour", "p", "", "a b.mov"}, {});
    EXPECT_EQ(std::get<Invocation>(words), (Invocation{UploadFile{"org harbour", "p", "", "a b.mov"}}));
}

TEST(Arguments, areAnsweredWithWhatIsWrong)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", "A command is required"},
        {"fetch", "There is no command “fetch”"},
        {"sign-in", "--email, --web or --passkey is required"},
        {"sign-in --web --password-stdin", "excludes"},
        {"sign-in --web --code 1", "excludes"},
        {"sign-in --passkey --web", "excludes"},
        {"sign-in --passkey --email e", "excludes"},
        {"site prod", "prod"},
        {"projects", "ORG"},
        {"projects a b", "b"},
        {"orgs --loud", "--loud"},
        {"orgs projects o", "projects"},
        {"bin o --search a --search b", "--search"},
        {"upload o p d", "FILE"},
        {"upload-bin o", "FILE"},
        {"download o p", "DELIVERABLE"},
        {"download o p d --retry off", "--retry"},
        {"download-bin o --to x", "KEY"},
        {"resume", "KEY or --all is required"},
        {"resume k --all", "excludes"},
        {"limit --up 0", "--up"},
        {"limit --hours 8-19", "--hours"},
        {"upload o p d f --limit-rate 20M", "--limit-rate"},
        {"discard", "KEY"},
    };
    for (const auto& [line, reason] : cases) {
        const auto answer = read(line);
        ASSERT_TRUE(std::holds_alternative<TextAnswer>(answer)) << line;
        EXPECT_TRUE(std::get<TextAnswer>(answer).isError) << line;
        EXPECT_THAT(answerTo(line), HasSubstr(reason));
        EXPECT_THAT(answerTo(line), HasSubstr("\nTry: palvera-cli"));
    }
    EXPECT_THAT(answerTo("\x1b[2Jboo"), Not(HasSubstr("\x1b"))) << "the user's own words must not reach a terminal raw";
}

} // namespace

} // namespace palvera::cli
