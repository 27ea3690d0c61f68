// The limit that a download is measured against: eight threads, each with one connection, that take ranges of a stored
// object and write them to their place in a file. No HTTP library, no retries, no record; what it costs is what the
// kernel (and TLS) costs. With --sync it also makes the bytes durable.

#include "RawConnection.h"

#include <CLI/CLI.hpp>

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace palvera::bench;

constexpr int receivers = 8;
constexpr std::size_t chunkSize = 32 << 20;
constexpr std::size_t sliceSize = 1 << 20; // still in the cache when it is written: 32 MiB cost half as much again

struct Plan {
    std::string url;
    std::string path;
    std::size_t size = 0;
    std::string sync = "none";
};

void writeAt(int file, const char* bytes, std::size_t count, std::size_t offset)
{
    while (count > 0) {
        auto written = ::pwrite(file, bytes, count, off_t(offset));
        if (written <= 0)
            die("cannot write the file");
        bytes += written;
        offset += std::size_t(written);
        count -= std::size_t(written);
    }
}

void receiveChunk(RawConnection& connection, const std::string& target, std::size_t begin, std::size_t end, int file,
                  std::vector<char>& slice)
{
    auto request = "GET " + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\nRange: bytes=" + std::to_string(begin) + '-' +
                   std::to_string(end - 1) + "\r\n\r\n";
    connection.write(request.data(), request.size());
    auto early = connection.readHead("206");
    writeAt(file, early.data(), early.size(), begin);
    for (auto at = begin + early.size(); at < end;) {
        auto wanted = std::min(slice.size(), end - at);
        for (std::size_t got = 0; got < wanted;)
            got += connection.read(slice.data() + got, wanted - got);
        writeAt(file, slice.data(), wanted, at);
        at += wanted;
    }
}

void receive(const Plan& plan, int file, std::atomic<std::size_t>& next)
{
    std::vector<char> slice(sliceSize);
    auto address = parseAddress(plan.url);
    RawConnection connection(address);
    for (auto begin = next.fetch_add(chunkSize); begin < plan.size; begin = next.fetch_add(chunkSize)) {
        receiveChunk(connection, address.target, begin, std::min(plan.size, begin + chunkSize), file, slice);
        if (plan.sync == "chunk" && ::fdatasync(file) != 0)
            die("cannot bring the file to the disk");
    }
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Brings an object down with eight bare connections");
    Plan plan;
    app.add_option("url", plan.url, "Address of the object")->required();
    app.add_option("size", plan.size, "Its bytes")->required();
    app.add_option("file", plan.path, "File to write")->required();
    app.add_option("--sync", plan.sync, "When to make the bytes durable")
        ->check(CLI::IsMember({"none", "end", "chunk"}))
        ->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    int file = ::open(plan.path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0 || ::fallocate(file, 0, 0, off_t(plan.size)) != 0)
        die("cannot make the file");
    std::atomic<std::size_t> next{0};
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < receivers; ++i)
            threads.emplace_back([&] { receive(plan, file, next); });
    }
    if (plan.sync == "end" && ::fdatasync(file) != 0)
        die("cannot bring the file to the disk");
}
