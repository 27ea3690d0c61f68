#include "installer/InstallerService.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

#include <unistd.h>

using namespace palvera::installer;

namespace {

constexpr int cannotBeUsed = 2;
constexpr int noBus = 3;

/// The program lies in the folder libexec under the root of the copy that it looks after.
QString ownRoot()
{
    const auto program = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
    return program.isEmpty() ? QStringLiteral("/opt/palvera") : QFileInfo(QFileInfo(program).path()).path();
}

QDBusConnection connectTo(const Settings& settings)
{
    if (!settings.busAddress.isEmpty())
        return QDBusConnection::connectToBus(settings.busAddress, QStringLiteral("installer"));
    return settings.usesSessionBus ? QDBusConnection::sessionBus() : QDBusConnection::systemBus();
}

int serve(QCoreApplication& application, const Settings& settings)
{
    auto bus = connectTo(settings);
    InstallerService service(bus, settings);
    // What the bus library says itself when its bus has gone.
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
                QStringLiteral("Disconnected"), &application, SLOT(quit()));
    if (!service.start()) {
        std::fprintf(stderr, "palvera-installer: has no place on the bus: %s\n", qPrintable(bus.lastError().message()));
        return noBus;
    }
    return QCoreApplication::exec();
}

} // namespace

int main(int count, char** words)
{
    QStringList given;
    for (int place = 1; place < count; ++place)
        given << QFile::decodeName(words[place]);
    const auto settings = readSettings(given, ::geteuid() == 0, ownRoot());
    if (!settings) {
        std::fprintf(stderr, "palvera-installer: %s\n", qPrintable(settings.error()));
        return cannotBeUsed;
    }
    if (settings->task)
        return runWorker(*settings);
    QCoreApplication application(count, words);
    return serve(application, *settings);
}
