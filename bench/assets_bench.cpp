// What the screen of assets costs with ten thousand objects, on the software renderer without a display: adding a page,
// scrolling, memory, and five hundred files that are dropped at once. Fails where a goal is missed.

#include "Frames.h"

#include "tests/app/Desktop.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>

namespace palvera {
namespace {

using bench::pass;
using bench::report;
using local::Fault;
using local::Operation;

constexpr int pages = 100;
constexpr int perPage = 100;

/// Bytes of the program that are in memory.
double resident()
{
    QFile statm("/proc/self/statm");
    return statm.open(QIODevice::ReadOnly) ? statm.readAll().split(' ')[1].toDouble() * 4096 : 0;
}

class AssetsBench {
public:
    AssetsBench()
    {
        m_desktop.upload = [](UploadRequest request) -> Task<void> {
            co_await untilStopped(request.flag);
            throwCancelled();
        };
        for (int page = 0; page < pages; ++page)
            m_desktop.platform.faults().add({.operation = Operation::bin,
                                             .after = page,
                                             .fault = {.kind = Fault::Kind::overwrite, .members = binPage(page)}});
        m_desktop.start();
        m_desktop.openClients();
        screen().click(QAccessible::ListItem, "Northlight Pictures");
        screen().click(QAccessible::ListItem, "Assets");
        screen().find(QAccessible::ListItem, "Uploads");
        view().enter(0);
        screen().waitUntil([this] { return view().face() == AssetsView::Table; });
        pass(std::chrono::seconds(1));
    }

    bool run()
    {
        bool met = load();
        met = scroll() && met;
        return drop() && met;
    }

private:
    Screen& screen() { return m_desktop.screen; }
    AssetsView& view() { return *m_desktop.root().assets(); }

    static QJsonObject binPage(int page)
    {
        QJsonArray objects;
        for (int i = page * perPage; i < (page + 1) * perPage; ++i)
            objects.append(QJsonObject{{"key", QString("Rushes/Day %1/Camera A, roll %2.mov").arg(i % 31).arg(i)},
                                       {"size", 1'000'000.0 + i},
                                       {"family", i % 3 ? "video" : "audio"},
                                       {"updatedAt", "2026-01-31T12:30:05Z"}});
        QJsonObject members{{"objects", objects}, {"folders", QJsonArray()}};
        members["nextCursor"] = page + 1 < pages ? QJsonValue(QString("after %1/+==").arg(page + 1)) : QJsonValue();
        return members;
    }

    bool load()
    {
        const auto before = resident();
        std::vector<double> times;
        while (view().hasMore()) {
            const auto began = bench::threadTime();
            view().loadMore();
            while (view().isLoadingMore())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            if (!view().moreError().isEmpty())
                throw std::runtime_error(view().moreError().toStdString());
            times.push_back(bench::threadTime() - began);
            pass(std::chrono::milliseconds(20));
        }
        const auto grown = (resident() - before) / (pages - 1) / perPage;
        std::cout << view().rowCount() << " rows, " << grown << " bytes each; goal 4096" << std::endl;
        return report("a page of 100 rows", times, 0.008) && grown <= 4096;
    }

    bool scroll()
    {
        auto* list = screen().find(QAccessible::List, "Uploads");
        std::vector<double> times;
        const auto end = list->property("contentHeight").toDouble() - list->height();
        for (double y = 100; y < end && times.size() < 500; y += times.size() % 2 ? 96 : 480)
            times.push_back(bench::untilShown(screen(), [&] { list->setProperty("contentY", y); }));
        return report("scrolling 10,000 rows, a frame", times, 0.016);
    }

    bool drop()
    {
        QList<QUrl> files;
        for (int i = 0; i < 500; ++i)
            files.append(m_desktop.sparseFile(QString("Take %1.mov").arg(i), 1000));
        const auto rows = view().rowCount() + int(files.size());
        QElapsedTimer all, one;
        qint64 longest = 0;
        all.start();
        one.start();
        view().drop(files);
        longest = one.elapsed();
        while (view().rowCount() < rows && !all.hasExpired(10'000)) {
            one.restart();
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            longest = std::max(longest, one.elapsed());
        }
        std::cout << "500 files dropped: all rows after " << all.elapsed() << " ms, goal 1000; the window was away for "
                  << longest << " ms at most, goal 50" << std::endl;
        return view().rowCount() == rows && all.elapsed() <= 1000 && longest <= 50;
    }

    Desktop m_desktop;
};

} // namespace
} // namespace palvera

int main(int argc, char** argv)
{
    return palvera::bench::runOffscreen<palvera::AssetsBench>(argc, argv);
}
