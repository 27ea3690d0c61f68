#include "desktop/StartRecord.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace palvera {

namespace {

constexpr int mostFailures = 2;
const std::string works = "works";

std::optional<long long> numberIn(const std::string& text)
{
    long long number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || end != text.data() + text.size() || number < 0)
        return {};
    return number;
}

} // namespace

std::string StartRecord::path()
{
    const char* state = std::getenv("XDG_STATE_HOME");
    const char* home = std::getenv("HOME");
    if (state && *state == '/')
        return std::string(state) + "/Palvera/start";
    return home && *home == '/' ? std::string(home) + "/.local/state/Palvera/start" : std::string();
}

std::optional<StartRecord> StartRecord::read(const std::string& path)
{
    std::error_code failure;
    if (!std::filesystem::is_regular_file(path, failure)) // a pipe would keep us waiting
        return {};
    std::string line;
    std::ifstream file(path);
    constexpr std::size_t longest = 40;
    line.resize(longest);
    file.read(line.data(), longest);
    line.resize(static_cast<std::size_t>(file.gcount()));
    return parse(line);
}

void StartRecord::write(const std::string& path, const std::optional<StartRecord>& record)
{
    namespace fs = std::filesystem;
    std::error_code ignored;
    if (path.empty())
        return;
    if (!record) {
        fs::remove(path, ignored);
        return;
    }
    const auto folder = fs::path(path).parent_path();
    if (!fs::exists(folder, ignored)) {
        fs::create_directories(folder, ignored);
        fs::permissions(folder, fs::perms::owner_all, ignored);
    }
    const auto fresh = path + "." + std::to_string(::getpid());
    std::ofstream file(fresh);
    file << record->text() << '\n';
    file.close();
    if (file)
        fs::rename(fresh, path, ignored);
    if (!file || ignored)
        fs::remove(fresh, ignored);
}

std::optional<StartRecord> StartRecord::parse(const std::string& text)
{
    const auto line = text.substr(0, text.find('\n'));
    const auto blank = line.find(' ');
    if (blank == std::string::npos)
        return {};
    const auto build = numberIn(line.substr(0, blank));
    const auto state = line.substr(blank + 1);
    const auto failures = state == works ? std::optional(0LL) : numberIn(state);
    if (!build || !failures || (*failures == 0 && state != works))
        return {};
    return StartRecord{.build = *build, .failures = int(std::min<long long>(*failures, mostFailures))};
}

std::string StartRecord::text() const
{
    return std::to_string(build) + ' ' + (failures == 0 ? works : std::to_string(failures));
}

Launch decideLaunch(long long current, const std::vector<long long>& builds, const std::optional<StartRecord>& last)
{
    const bool isSame = last && last->build == current;
    if (isSame && last->failures == 0)
        return {.build = current};
    const int failures = isSame ? last->failures : 0;
    if (failures < mostFailures)
        return {.build = current, .record = StartRecord{.build = current, .failures = failures + 1}};
    long long before = 0;
    for (const auto build : builds)
        if (build < current)
            before = std::max(before, build);
    if (before == 0) // nothing to go back to
        return {.build = current};
    return {.build = before, .fellBackFrom = current};
}

} // namespace palvera
