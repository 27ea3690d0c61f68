#pragma once

#include <optional>
#include <string>
#include <vector>

namespace palvera {

// What the launcher and the program tell each other of how a build starts, for this user. Of the standard library
// alone: the launcher must start whatever state the libraries of a build are in.

/// The build that was started last, in a file of a few bytes: "57 works", or "57 2" after two starts that have come to
/// nothing so far.
struct StartRecord {
    long long build = 0;
    int failures = 0; ///< in a row; 0 for a build that has worked

    bool operator==(const StartRecord&) const = default;

    /// "Palvera/start" in the user's folder for state (XDG_STATE_HOME); empty for a user without a home.
    static std::string path();
    /// Nothing where there is no such file or it holds something else.
    static std::optional<StartRecord> read(const std::string& path);
    /// Replaces the file at `path`, or removes it for nothing. A failure is ignored: then starts are not counted.
    static void write(const std::string& path, const std::optional<StartRecord>& record);

    static std::optional<StartRecord> parse(const std::string& text);
    std::string text() const;
};

/// Which build the launcher starts.
struct Launch {
    long long build = 0;
    std::optional<long long> fellBackFrom = {}; ///< the current build, where it has failed twice
    std::optional<StartRecord> record = {};     ///< to be written first, where there is something to count

    bool operator==(const Launch&) const = default;
};

/// By the current build, those that are there, and what is known of the last start. A build that has worked is started
/// whatever comes; one that has twice come to nothing gives way to the highest below it.
Launch decideLaunch(long long current, const std::vector<long long>& builds, const std::optional<StartRecord>& last);

// What the launcher puts into the environment of the program.

inline constexpr auto recordBeforeVariable = "PALVERA_START";      ///< the record's text before this start
inline constexpr auto fellBackVariable = "PALVERA_FELL_BACK_FROM"; ///< the number of the build that failed
inline constexpr auto addressesVariable = "PALVERA_ADDRESSES";     ///< an open file with what it was to open

} // namespace palvera
