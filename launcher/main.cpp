// The launcher: ROOT/bin/palvera, which becomes ROOT/builds/N/bin/palvera; called as palvera-cli, that of this name.
//
// It counts the starts of a build that have come to nothing so far, and after two of them starts the build before, for
// this user and without any rights: whoever has a delivery to make must not be left without a program by an update.

#include "desktop/StartRecord.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>

#include <strings.h>
#include <sys/mman.h>
#include <unistd.h>

namespace palvera {
namespace {

namespace fs = std::filesystem;

constexpr const char* desktopProgram = "palvera";
constexpr const char* commandLine = "palvera-cli";

/// Takes what the program is to open out of the arguments, which every user of the machine can read; each address ends
/// in a zero byte.
std::string takeAddresses(int& argc, char** argv)
{
    constexpr auto scheme = "palvera:";
    std::string addresses;
    const auto end = std::remove_if(argv + 1, argv + argc, [&](char* argument) {
        if (::strncasecmp(argument, scheme, std::strlen(scheme)) != 0)
            return false;
        addresses.append(argument, std::strlen(argument) + 1);
        ::explicit_bzero(argument, std::strlen(argument));
        return true;
    });
    argc = int(end - argv);
    argv[argc] = nullptr;
    return addresses;
}

/// Hands `addresses` over in an open file without a name, which is gone with its last reader: an environment stays
/// readable as long as its process lives.
void passOn(const std::string& addresses)
{
    if (addresses.empty())
        return;
    const int file = ::memfd_create("addresses", 0);
    if (file < 0 || ::write(file, addresses.data(), addresses.size()) != ssize_t(addresses.size()))
        return;
    ::lseek(file, 0, SEEK_SET);
    ::setenv(addressesVariable, std::to_string(file).c_str(), 1);
}

/// Whether what is about to start could come to have a window: only such a start says something of a build.
bool isToHaveWindow(int argc, char** argv, const char* name)
{
    if (name != desktopProgram)
        return false;
    const auto isSet = [](const char* variable) {
        const char* value = std::getenv(variable);
        return value && *value;
    };
    const bool isQuestion = argc > 1 && std::strncmp(argv[1], "--", 2) == 0; // --version, --self-test
    return !isQuestion && (isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM"));
}

long long numberOf(const fs::path& name)
{
    const auto text = name.string();
    const bool isNumber = !text.empty() && text.size() < 18 && text.front() != '0' &&
                          std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
    return isNumber ? std::stoll(text) : 0;
}

/// Those that are there, in no order.
std::vector<long long> buildsIn(const fs::path& root)
{
    std::vector<long long> builds;
    std::error_code failure;
    for (fs::directory_iterator entry(root / "builds", failure), end; !failure && entry != end;
         entry.increment(failure))
        if (const auto number = numberOf(entry->path().filename()); number > 0)
            builds.push_back(number);
    return builds;
}

void become(const fs::path& root, long long build, const char* name, char** argv)
{
    const auto program = (root / "builds" / std::to_string(build) / "bin" / name).string();
    argv[0] = const_cast<char*>(program.c_str());
    ::execv(program.c_str(), argv);
    std::cerr << program << ": " << std::strerror(errno) << std::endl;
}

int run(int argc, char** argv)
{
    for (const auto* variable : {recordBeforeVariable, fellBackVariable, addressesVariable})
        ::unsetenv(variable); // left by whoever started this
    const auto* name = argc > 0 && fs::path(argv[0]).filename() == commandLine ? commandLine : desktopProgram;
    if (name == desktopProgram)
        passOn(takeAddresses(argc, argv));
    std::error_code failure;
    const auto root = fs::read_symlink("/proc/self/exe", failure).parent_path().parent_path();
    const auto current = numberOf(fs::read_symlink(root / "current", failure).filename());
    auto builds = buildsIn(root);
    const auto path = StartRecord::path();
    const auto last = StartRecord::read(path);
    const auto launch = decideLaunch(current, builds, last);
    if (launch.record && isToHaveWindow(argc, argv, name)) {
        ::setenv(recordBeforeVariable, last ? last->text().c_str() : "", 1);
        StartRecord::write(path, launch.record);
    }
    if (launch.fellBackFrom)
        ::setenv(fellBackVariable, std::to_string(*launch.fellBackFrom).c_str(), 1);
    become(root, launch.build, name, argv);
    // It cannot even be executed: then whichever can, the highest first.
    std::ranges::sort(builds, std::greater());
    for (const auto build : builds) {
        if (build >= launch.build)
            continue;
        ::setenv(fellBackVariable, std::to_string(launch.fellBackFrom.value_or(launch.build)).c_str(), 1);
        become(root, build, name, argv);
    }
    std::cerr << "There is no build of Palvera in " << root.string() << " that could be started." << std::endl;
    return 127;
}

} // namespace
} // namespace palvera

int main(int argc, char** argv)
{
    return palvera::run(argc, argv);
}
