#pragma once

#include "update/Updater.h"

#include "support/FakeHttpClient.h"
#include "support/FakeInstaller.h"
#include "support/QtPrinting.h"
#include "support/Simulation.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera {

using namespace std::chrono_literals;

inline const QByteArray feedOf58 = R"({"version":"1.5","build":"58","url":"https://cdn.test/p.dmg","notes":"Faster"})";
inline const QByteArray feedOf57 = R"({"version":"1.4","build":"57","url":"https://cdn.test/p.dmg"})";

/// Build 57 of the program, a feed and an image server in memory, in virtual time.
struct UpdateFixture : testing::Test {
    Simulation world;
    QTemporaryDir disk;
    FakeHttpClient http{world.clock};
    FakeWorkspace workspace;
    FakeInstaller installer;
    QByteArray feed = feedOf58;
    std::exception_ptr feedFailure;
    HttpResponse image{.status = 200, .headers = {{"Content-Length", "900"}}, .body = QByteArray(900, 'i')};
    QString target = "/opt/palvera";
    std::optional<Updater> updater;

    UpdateFixture()
    {
        http.handler = [this](const HttpRequest& request) -> HttpResponse {
            if (request.url.endsWith(".dmg"))
                return image;
            if (feedFailure)
                std::rethrow_exception(feedFailure);
            return {.status = 200, .body = feed};
        };
    }
    ~UpdateFixture() override { close(); }

    Updater::Environment environment()
    {
        return {.main = world.executor(),
                .disk = world.executor(),
                .clock = world.clock,
                .http = http,
                .workspace = workspace,
                .feed = "https://feed.test/latest.json",
                .version = "1.4",
                .build = "57",
                .caches = disk.path(),
                .target = target,
                .connect = [this] { return installer.connect(); }};
    }
    void start() { updater.emplace(environment()); }
    void close()
    {
        if (updater)
            world.run(updater->close());
        updater.reset();
    }
    /// Until the feed has been read once.
    void begin()
    {
        start();
        world.settle();
    }
    std::ptrdiff_t reads() const
    {
        return std::ranges::count_if(http.requests(), [](const auto& it) { return it.url.endsWith(".json"); });
    }
    template <class Phase>
    bool is() const
    {
        return std::holds_alternative<Phase>(updater->phase());
    }
    QString failure() const
    {
        const auto* failed = std::get_if<Updater::Failed>(&updater->phase());
        return failed ? failed->message : "none";
    }
    QStringList leftInCaches() const { return QDir(disk.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot); }
    void install()
    {
        updater->install();
        world.settle();
    }
    void restart()
    {
        updater->restart();
        world.settle();
    }
    void makeReady()
    {
        begin();
        install();
        ASSERT_TRUE(is<Updater::Ready>()) << failure().toStdString();
    }
};

} // namespace palvera
