#include "localplatform/FaultFile.h"
#include "localplatform/Server.h"

#include <CLI/CLI.hpp>
#include <QDateTime>

#include <boost/asio/signal_set.hpp>

#include <fstream>
#include <iomanip>
#include <iostream>

namespace palvera::local {
namespace {

struct Flags {
    std::string address = "127.0.0.1";
    unsigned short port = 8080;
    unsigned short storagePort = 0;
    std::string data;
    std::string faults;
    std::string violations;
    std::vector<std::string> tls;
    long long partSize = 32LL << 20;
    int expireSeconds = 15 * 60;
    long long bytesPerSecond = 0;
    bool discard = false;
    bool md5 = false;
    std::string update;
    std::string updateBuild;
    std::string updateNotes;
};

void readFlags(CLI::App& app, Flags& flags)
{
    app.add_option("--address", flags.address, "Address to listen at, of this machine")->capture_default_str();
    app.add_option("--port", flags.port, "Port of the service; 0 takes any")->capture_default_str();
    app.add_option("--storage-port", flags.storagePort, "Port of storage; the service's port and one more when absent");
    app.add_option("--data", flags.data, "Folder that keeps state and files between runs; in memory when absent");
    app.add_option("--faults", flags.faults, "JSON file of faults, read again whenever it changes");
    app.add_option("--violations", flags.violations, "File to which every improper request is appended");
    app.add_option("--tls", flags.tls, "Certificate and key (PEM): storage speaks https")->expected(2);
    app.add_option("--part-size", flags.partSize, "Bytes of an upload's part")
        ->check(CLI::Range(1LL, 5LL << 30))
        ->capture_default_str();
    app.add_option("--expire-seconds", flags.expireSeconds, "How long signed addresses are good")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    app.add_option("--bytes-per-second", flags.bytesPerSecond, "The most that storage moves on one connection")
        ->check(CLI::PositiveNumber);
    app.add_flag("--discard", flags.discard, "Throw the bytes of uploads away; keep sizes and tags");
    auto* update =
        app.add_option("--update", flags.update, "Publishes the image Palvera-VERSION.dmg in the update feed");
    update->needs(app.add_option("--update-build", flags.updateBuild, "Its build number"));
    app.add_option("--update-notes", flags.updateNotes, "What is new in it")->needs(update);
    app.add_flag("--md5", flags.md5, "Tag parts with their MD5 instead of an opaque text");
}

PlatformOptions platformOptions(const Flags& flags)
{
    return {.partSize = flags.partSize,
            .addressLife = std::chrono::seconds(flags.expireSeconds),
            .folder = QString::fromStdString(flags.data),
            .discard = flags.discard,
            .tags = flags.md5 ? Tags::md5 : Tags::opaque,
            .update = {.image = QString::fromStdString(flags.update),
                       .build = QString::fromStdString(flags.updateBuild),
                       .notes = QString::fromStdString(flags.updateNotes)}};
}

ServerOptions serverOptions(const Flags& flags)
{
    auto storagePort = flags.storagePort;
    if (storagePort == 0 && flags.port != 0)
        storagePort = static_cast<unsigned short>(flags.port + 1);
    ServerOptions options{.servicePort = flags.port,
                          .storagePort = storagePort,
                          .address = flags.address,
                          .bytesPerSecond = flags.bytesPerSecond};
    if (!flags.tls.empty()) {
        options.certificate = QString::fromStdString(flags.tls[0]);
        options.key = QString::fromStdString(flags.tls[1]);
    }
    return options;
}

void printAccounts()
{
    std::cout << "\nAccounts\n";
    auto row = [](const char* email, const char* secret, const char* code, const char* note) {
        std::cout << "  " << std::left << std::setw(26) << email << std::setw(14) << secret << std::setw(8) << code
                  << note << '\n';
    };
    row("e-mail", "password", "code", "");
    for (const auto& account : sampleAccounts())
        row(account.email, account.secret, account.code, account.note);
}

/// Appends to a file as violations happen.
class ViolationFile {
public:
    explicit ViolationFile(const std::string& path) : m_file(path, std::ios::app)
    {
        if (!m_file)
            throw std::runtime_error("cannot write " + path);
    }
    void append(const QString& what) { m_file << what.toStdString() << std::endl; }

private:
    std::ofstream m_file;
};

void waitForTheEnd()
{
    boost::asio::io_context io;
    boost::asio::signal_set signals(io, SIGINT, SIGTERM);
    signals.async_wait([](const boost::system::error_code&, int) {});
    io.run();
}

void serve(const Flags& flags)
{
    Platform platform(platformOptions(flags), [] { return std::chrono::system_clock::now(); });
    std::optional<ViolationFile> violations;
    if (!flags.violations.empty()) {
        violations.emplace(flags.violations);
        platform.onViolation([&](const QString& what) { violations->append(what); });
    }
    auto options = serverOptions(flags);
    std::optional<FaultFile> faults;
    if (!flags.faults.empty()) {
        faults.emplace(flags.faults, platform.faults());
        options.beforeRequest = [&] { faults->refresh(); };
    }
    Server server(platform, options);
    std::cout << "PV_API=" << server.serviceAddress().toStdString() << "/api\n"
              << "storage " << server.storageAddress().toStdString() << '\n';
    printAccounts();
    std::cout << std::flush;
    waitForTheEnd();
}

int run(int argc, char** argv)
{
    CLI::App app("The delivery platform and its storage on this machine");
    Flags flags;
    readFlags(app, flags);
    CLI11_PARSE(app, argc, argv);
    try {
        serve(flags);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    return 0;
}

} // namespace
} // namespace palvera::local

int main(int argc, char** argv)
{
    return palvera::local::run(argc, argv);
}
