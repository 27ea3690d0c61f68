#include "desktop/FileManager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace palvera {

namespace {

const QString fileManager = QStringLiteral("org.freedesktop.FileManager1");
const QString connectionName = QStringLiteral("palvera-files");

void openFolderOf(const QString& path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).path()));
}

} // namespace

void showInFolder(const QString& path, const QString& busAddress)
{
    auto bus = busAddress.isEmpty() ? QDBusConnection::sessionBus()
                                    : QDBusConnection::connectToBus(busAddress, connectionName);
    if (!bus.isConnected() || !QFileInfo::exists(path))
        return openFolderOf(path);
    auto call = QDBusMessage::createMethodCall(fileManager, QStringLiteral("/org/freedesktop/FileManager1"),
                                               fileManager, QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QString();
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, path] {
        if (watcher->isError())
            openFolderOf(path);
        watcher->deleteLater();
    });
}

void openFile(const QString& path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

} // namespace palvera
