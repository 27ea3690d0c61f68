#include "cli/Arguments.h"

#include "cli/DisplayText.h"
#include "files/SourcePath.h"
#include "text/VisibleText.h"
#include "transfers/LineLimits.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace palvera::cli {

namespace {

constexpr auto programName = "palvera-cli";
constexpr auto about = "Delivers master files to the Palvera platform from the command line.";
constexpr auto notes = R"(Organisations, projects and deliverables are named by the identifiers that the listings show.
An upload that is cut off keeps its place: "interrupted" lists it and "resume" goes on from there.

Exit status: 0 done, 1 failed, 2 wrong usage, 3 not signed in, 4 the platform asks for confirmation,
5 the platform cannot be reached, 6 the disk is full, 130 interrupted.
The manual page palvera-cli(1) says more.)";

/// The parser while it is put together, and where it leaves what it finds.
class Grammar {
public:
    explicit Grammar(const QString& version)
    {
        m_app.set_version_flag("--version", std::string(programName) + ' ' + version.toStdString(),
                               "Print the version and exit");
        m_app.add_flag("--json", m_json, "Print one JSON object a line, for programs to read");
        m_app.get_help_ptr()->description("Print this help and exit");
        m_app.get_formatter()->column_width(28);
        m_app.require_subcommand(1);
        m_app.fallthrough();
        m_app.get_formatter()->label("SUBCOMMAND", "COMMAND");
        addAccount();
        addListings();
        addUploads();
        addInterrupted();
        addDownloads();
        m_app.footer(notes); // commands that are added later would inherit it
    }

    /// Throws CLI::ParseError.
    Invocation parse(const QStringList& words)
    {
        std::vector<std::string> reversed; // as CLI11 wants them
        for (auto word = words.crbegin(); word != words.crend(); ++word)
            reversed.push_back(marked(pathToBytes(*word).toStdString()));
        m_app.parse(std::move(reversed));
        for (const auto& [parser, make] : m_commands)
            if (parser->parsed())
                return {.command = make(),
                        .json = m_json,
                        .retry = m_words.retry,
                        .stopOnInterrupt = m_words.stopOnInterrupt,
                        .limitRate = m_words.limitRate};
        throw CLI::RequiredError("A command"); // CLI11 has seen to it that there is one
    }

    std::string help() { return m_app.help(); }
    /// The name of the command that the words were read for; empty when they did not come to one.
    QString commandName() const
    {
        const auto chosen = m_app.get_subcommands();
        return chosen.empty() ? QString() : text(chosen.front()->get_name());
    }

private:
    /// What the command line holds, as its author typed it.
    struct Words {
        std::string email, org, project, deliverable, file, key;
        std::vector<std::string> files;
        std::optional<std::string> site, search, family, folder, to, code, hours;
        std::optional<qint64> limitRate, up, down;
        bool passwordFromStdin = false;
        bool web = false;
        bool passkey = false;
        bool confirmed = false;
        bool all = false;
        bool retry = true;
        bool stopOnInterrupt = false;
    };

    /// CLI11 takes "[a,b]" among several values for two of them. A byte that no argument can hold keeps it one.
    static std::string marked(std::string word)
    {
        if (word.starts_with('[') && word.ends_with(']'))
            word += '\0';
        return word;
    }
    static QString text(const std::string& word) { return pathFromBytes(word.c_str()); }
    static std::optional<QString> text(const std::optional<std::string>& word)
    {
        return word ? std::optional(text(*word)) : std::nullopt;
    }

    CLI::App* add(const char* name, const char* summary, std::function<Command()> make)
    {
        auto* parser = m_app.add_subcommand(name, summary);
        parser->group(m_group);
        parser->get_help_ptr()->description("Print this help and exit");
        m_commands.emplace_back(parser, std::move(make));
        return parser;
    }

    template <class Value>
    static CLI::Option* need(CLI::App* parser, const char* name, Value& into, const char* summary)
    {
        return parser->add_option(name, into, summary)->required()->option_text(" ");
    }
    template <class Value>
    static CLI::Option* offer(CLI::App* parser, const char* name, Value& into, const char* placeholder,
                              const char* summary)
    {
        return parser->add_option(name, into, summary)->option_text(placeholder);
    }

    CLI::Option* needOrg(CLI::App* parser)
    {
        return need(parser, "ORG", m_words.org, "The organisation's identifier, see \"orgs\"");
    }
    CLI::Option* needProject(CLI::App* parser)
    {
        return need(parser, "PROJECT", m_words.project, "The project's identifier, see \"projects\"");
    }

    void addAccount()
    {
        m_group = "Account";
        auto* signIn = add("sign-in", "Sign in, for this and every later command", [this] {
            if (!m_words.web && !m_words.passkey && m_words.email.empty())
                throw CLI::RequiredError("--email, --web or --passkey");
            return SignIn{.email = text(m_words.email),
                          .code = text(m_words.code),
                          .passwordFromStdin = m_words.passwordFromStdin,
                          .inBrowser = m_words.web,
                          .withPasskey = m_words.passkey};
        });
        signIn->footer("The password is asked for on the terminal and not shown. So is a code, where the platform\n"
                       "wants one from your e-mail or your authenticator. A sign-in in the browser works from a\n"
                       "computer without a display, too: it takes the last address from the terminal.");
        auto* email = offer(signIn, "--email", m_words.email, "E", "The e-mail address of the account");
        auto* web = signIn->add_flag("--web", m_words.web, "Sign in in the browser");
        auto* passkey = signIn->add_flag("--passkey", m_words.passkey, "Sign in with your security key")
                            ->excludes(web)
                            ->excludes(email);
        signIn
            ->add_flag("--password-stdin", m_words.passwordFromStdin,
                       "Read the password from the first line of standard input")
            ->excludes(web)
            ->excludes(passkey);
        offer(signIn, "--code", m_words.code, "C", "The code from your e-mail or your authenticator")
            ->excludes(web)
            ->excludes(passkey);
        add("sign-out", "Sign out and forget the sign-in", [] { return SignOut{}; });
        add("whoami", "Print who is signed in", [] { return WhoAmI{}; });
        auto* site = add("site", "Print or choose the platform's site that commands go to", [this] {
            std::optional<Site> chosen;
            for (auto known : allSites)
                if (m_words.site && rawValue(known) == text(*m_words.site))
                    chosen = known;
            return ChooseSite{.site = chosen};
        });
        site->footer("Each site keeps its own sign-in. PV_API in the environment overrides the choice.");
        std::vector<std::string> names;
        for (auto known : allSites)
            names.push_back(rawValue(known).toStdString());
        offer(site, "SITE", m_words.site, " ", "The site to use from here on: live or qa")->check(CLI::IsMember(names));
    }

    void addListings()
    {
        m_group = "Listings";
        add("orgs", "List the organisations that share work with you", [] { return ListOrgs{}; });
        auto* projects = add("projects", "List the projects of an organisation",
                             [this] { return ListProjects{.org = text(m_words.org)}; });
        needOrg(projects);
        auto* deliverables = add("deliverables", "List what a project must deliver", [this] {
            return ListDeliverables{.org = text(m_words.org), .project = text(m_words.project)};
        });
        needOrg(deliverables);
        needProject(deliverables);
        auto* assets = add("assets", "List the files delivered to an organisation, newest first", [this] {
            return ListAssets{.org = text(m_words.org), .search = text(m_words.search), .family = text(m_words.family)};
        });
        needOrg(assets);
        offer(assets, "--search", m_words.search, "T", "Only files that match this text");
        offer(assets, "--family", m_words.family, "F",
              "Only files of this family: video, audio, subtitles, artwork, documents");
        auto* bin = add("bin", "List an organisation's Uploads bin, or one folder of it", [this] {
            return ListBin{.org = text(m_words.org), .folder = text(m_words.folder), .search = text(m_words.search)};
        });
        needOrg(bin);
        offer(bin, "--folder", m_words.folder, "F", "The folder to list instead of the top level");
        offer(bin, "--search", m_words.search, "T", "Everything below that matches this text");
    }

    void addUploads()
    {
        m_group = "Uploads";
        auto* upload = add("upload", "Send a file and file it on a deliverable", [this] {
            return UploadFile{.org = text(m_words.org),
                              .project = text(m_words.project),
                              .deliverable = text(m_words.deliverable),
                              .file = text(m_words.file),
                              .confirmed = m_words.confirmed};
        });
        upload->footer("An earlier upload of the same unchanged file to the same deliverable that was cut off goes on\n"
                       "where it was.");
        needOrg(upload);
        needProject(upload);
        need(upload, "DELIVERABLE", m_words.deliverable, "The deliverable's identifier, see \"deliverables\"");
        need(upload, "FILE", m_words.file, "The file to send");
        upload->add_flag("--confirmed", m_words.confirmed,
                         "Send although the platform asked about this delivery (exit status 4)");
        offerUploadOptions(upload);
        auto* uploadBin = add("upload-bin", "Send files to an organisation's Uploads bin, a few at once", [this] {
            QStringList files;
            for (const auto& file : m_words.files)
                files.append(text(file));
            return UploadToBin{.org = text(m_words.org), .files = files, .folder = text(m_words.folder)};
        });
        uploadBin->footer("The exit status is that of the file that fared worst.");
        needOrg(uploadBin);
        need(uploadBin, "FILE", m_words.files, "The files to send")->option_text("...");
        offer(uploadBin, "--folder", m_words.folder, "F", "The folder of the bin to send them to");
        offerUploadOptions(uploadBin);
    }

    void offerUploadOptions(CLI::App* parser)
    {
        offer(parser, "--retry", m_words.retry, "on|off",
              "Whether to try again, for half an hour or so, what the network or the platform failed at");
        parser->add_flag("--stop-on-interrupt", m_words.stopOnInterrupt,
                         "Give up what is in flight when interrupted, instead of keeping it to go on with");
        offerLimitRate(parser);
    }
    void offerLimitRate(CLI::App* parser)
    {
        offerRate(parser, "--limit-rate", m_words.limitRate,
                  "Take at most R MB/s of the line this time; off: no limit");
    }
    static void offerRate(CLI::App* parser, const char* name, std::optional<qint64>& into, const char* summary)
    {
        parser
            ->add_option_function<std::string>(
                name,
                [name, &into](const std::string& word) {
                    into = rateFrom(text(word));
                    if (!into)
                        throw CLI::ValidationError(name, "give MB/s, from 0.1 on, or off");
                },
                summary)
            ->option_text("R");
    }

    void addInterrupted()
    {
        m_group = "Uploads that were cut off";
        add("interrupted", "List the uploads that were cut off", [] { return ListInterrupted{}; });
        auto* resume = add("resume", "Go on with uploads that were cut off", [this] {
            return ResumeUploads{.key = m_words.all ? std::nullopt : std::optional(text(m_words.key))};
        });
        auto* key = offer(resume, "KEY", m_words.key, " ", "The upload's key, see \"interrupted\"");
        auto* all = resume->add_flag("--all", m_words.all, "All of them, a few at once");
        all->option_text(" ");
        key->excludes(all);
        resume->parse_complete_callback([key, all] {
            if (key->empty() && all->empty())
                throw CLI::RequiredError("KEY or --all");
        });
        offerUploadOptions(resume);
        auto* discard = add("discard", "Give up an upload that was cut off, and what the platform holds of it",
                            [this] { return DiscardUpload{.key = text(m_words.key)}; });
        need(discard, "KEY", m_words.key, "The upload's key, see \"interrupted\"");
    }

    void addDownloads()
    {
        m_group = "Downloads";
        const auto* again =
            "Existing files are never replaced: the new one gets a number. A download that was cut off\n"
            "goes on where it was.";
        auto* download = add("download", "Bring down the file that was delivered for a deliverable", [this] {
            return DownloadFiled{.org = text(m_words.org),
                                 .project = text(m_words.project),
                                 .deliverable = text(m_words.deliverable),
                                 .folder = text(m_words.to)};
        });
        download->footer(again);
        needOrg(download);
        needProject(download);
        need(download, "DELIVERABLE", m_words.deliverable, "The deliverable's identifier, see \"deliverables\"");
        offerFolder(download);
        auto* downloadBin = add("download-bin", "Bring down files of an organisation's Uploads bin", [this] {
            QStringList keys;
            for (const auto& key : m_words.files)
                keys.append(text(key));
            return DownloadFromBin{.org = text(m_words.org), .keys = keys, .folder = text(m_words.to)};
        });
        downloadBin->footer(again);
        needOrg(downloadBin);
        need(downloadBin, "KEY", m_words.files, "The files' keys, see \"bin\"")->option_text("...");
        offerFolder(downloadBin);
        auto* folder = add("downloads-folder", "Print or choose the folder that downloads go to",
                           [this] { return DownloadsFolder{.folder = text(m_words.folder)}; });
        offer(folder, "DIR", m_words.folder, " ", "The folder to use from here on");
        m_group = "The line";
        auto* limit = add("limit", "Print or choose how much of the line transfers take, in both programs", [this] {
            return LimitLine{.up = m_words.up, .down = m_words.down, .hours = text(m_words.hours)};
        });
        offerRate(limit, "--up", m_words.up, "Send at most R MB/s; off: no limit");
        offerRate(limit, "--down", m_words.down, "Receive at most R MB/s; off: no limit");
        offer(limit, "--hours", m_words.hours, "H", "The hours of the day in which that holds: 08:00-19:00, or always")
            ->check([](const std::string& word) {
                return word == "always" || hoursFrom(text(word)) ? std::string()
                                                                 : "give hours as 08:00-19:00, or always";
            });
    }
    void offerFolder(CLI::App* parser)
    {
        offer(parser, "--to", m_words.to, "DIR", "The folder to put it into, instead of the downloads folder");
        offerLimitRate(parser);
    }

    CLI::App m_app{about, programName};
    Words m_words;
    std::string m_group; // of the commands that are added next, in the help
    bool m_json = false;
    std::vector<std::pair<CLI::App*, std::function<Command()>>> m_commands;
};

/// What is wrong with `words`, in our own terms where CLI11 speaks of its own.
QString complaint(const CLI::ParseError& error, const QString& command, const QStringList& words)
{
    if (!command.isEmpty())
        return QString::fromUtf8(error.what());
    for (const auto& word : words)
        if (!word.startsWith(u'-'))
            return QStringLiteral("There is no command “%1”").arg(word);
    if (dynamic_cast<const CLI::RequiredError*>(&error))
        return QStringLiteral("A command is required");
    return QString::fromUtf8(error.what());
}

TextAnswer usageError(const CLI::ParseError& error, const QString& command, const QStringList& words)
{
    const auto program = QLatin1String(programName);
    auto help = command.isEmpty() ? QString(program) : program + u' ' + command;
    return {.text = QStringLiteral("%1: %2\nTry: %3 --help\n")
                        .arg(program, visibleText(complaint(error, command, words)), help),
            .isError = true};
}

} // namespace

std::variant<Invocation, TextAnswer> readArguments(const QStringList& words, const QString& version)
{
    Grammar grammar(version);
    try {
        return grammar.parse(words);
    } catch (const CLI::CallForHelp&) {
        return TextAnswer{.text = QString::fromStdString(grammar.help())};
    } catch (const CLI::CallForVersion& answer) {
        return TextAnswer{.text = QString::fromUtf8(answer.what()) + u'\n'};
    } catch (const CLI::ParseError& error) {
        return usageError(error, grammar.commandName(), words);
    }
}

} // namespace palvera::cli
