#pragma once

#include "service/Site.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace palvera::cli {

// What the user may ask for, one record for each command. Organisations, projects and deliverables are named by id.

struct SignIn {
    QString email;                    ///< may be empty where the browser asks for it
    std::optional<QString> code = {}; ///< that the platform may ask for; nothing asks on the terminal
    bool passwordFromStdin = false;   ///< else it is asked for on the terminal
    bool inBrowser = false;           ///< on the platform's pages, whichever way in the account has
    bool withPasskey = false;         ///< that a security key holds

    bool operator==(const SignIn&) const = default;
};
struct SignOut {
    bool operator==(const SignOut&) const = default;
};
struct WhoAmI {
    bool operator==(const WhoAmI&) const = default;
};
struct ChooseSite {
    std::optional<Site> site; ///< nothing only asks which one it is

    bool operator==(const ChooseSite&) const = default;
};

struct ListOrgs {
    bool operator==(const ListOrgs&) const = default;
};
struct ListProjects {
    QString org;

    bool operator==(const ListProjects&) const = default;
};
struct ListDeliverables {
    QString org;
    QString project;

    bool operator==(const ListDeliverables&) const = default;
};
struct ListAssets {
    QString org;
    std::optional<QString> search = {};
    std::optional<QString> family = {};

    bool operator==(const ListAssets&) const = default;
};
struct ListBin {
    QString org;
    std::optional<QString> folder = {};
    std::optional<QString> search = {};

    bool operator==(const ListBin&) const = default;
};

struct UploadFile {
    QString org;
    QString project;
    QString deliverable;
    QString file;
    bool confirmed = false; ///< answers the platform's question about this delivery

    bool operator==(const UploadFile&) const = default;
};
struct UploadToBin {
    QString org;
    QStringList files; ///< at least one
    std::optional<QString> folder = {};

    bool operator==(const UploadToBin&) const = default;
};
struct DownloadFiled {
    QString org;
    QString project;
    QString deliverable;
    std::optional<QString> folder = {}; ///< where the file goes; nothing is the downloads folder

    bool operator==(const DownloadFiled&) const = default;
};
struct DownloadFromBin {
    QString org;
    QStringList keys;                   ///< at least one
    std::optional<QString> folder = {}; ///< where the files go; nothing is the downloads folder

    bool operator==(const DownloadFromBin&) const = default;
};
struct DownloadsFolder {
    std::optional<QString> folder; ///< nothing prints the one in use

    bool operator==(const DownloadsFolder&) const = default;
};
struct LimitLine {
    std::optional<qint64> up = {};     ///< bytes a second; 0 is no limit
    std::optional<qint64> down = {};   ///< the same
    std::optional<QString> hours = {}; ///< "08:00-19:00", or "always"

    bool operator==(const LimitLine&) const = default;
};
struct ListInterrupted {
    bool operator==(const ListInterrupted&) const = default;
};
struct ResumeUploads {
    std::optional<QString> key; ///< nothing is all of them

    bool operator==(const ResumeUploads&) const = default;
};
struct DiscardUpload {
    QString key;

    bool operator==(const DiscardUpload&) const = default;
};

using Command = std::variant<SignIn, SignOut, WhoAmI, ChooseSite, ListOrgs, ListProjects, ListDeliverables, ListAssets,
                             ListBin, UploadFile, UploadToBin, DownloadFiled, DownloadFromBin, DownloadsFolder,
                             LimitLine, ListInterrupted, ResumeUploads, DiscardUpload>;

/// A command line that asks for something to be done.
struct Invocation {
    Command command;
    bool json = false;            ///< one JSON object a line instead of text for people
    bool retry = true;            ///< a failed upload is tried again
    bool stopOnInterrupt = false; ///< an interruption gives up what is in flight
    /// For this run, bytes a second each way; 0 is no limit. Nothing is what the user has set.
    std::optional<qint64> limitRate = {};

    bool operator==(const Invocation&) const = default;
};

/// A command line that is answered with a text alone: help, the version, or what is wrong with it.
struct TextAnswer {
    QString text; ///< with its final line feed
    bool isError = false;
};

/// Makes sense of the words after the program's name. `version` is what --version says.
std::variant<Invocation, TextAnswer> readArguments(const QStringList& words, const QString& version);

} // namespace palvera::cli
