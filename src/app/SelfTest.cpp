#include "app/SelfTest.h"

#include <QDirIterator>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <QQmlComponent>
#include <QQmlEngine>

namespace palvera {

namespace {

QStringList faultsOfScreens()
{
    QStringList faults;
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    int screens = 0;
    QDirIterator files(QStringLiteral(":/qt/qml/Palvera"), {QStringLiteral("*.qml")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QQmlComponent screen(&engine, QUrl(QStringLiteral("qrc") + files.next()));
        ++screens;
        for (const auto& error : screen.errors())
            faults.append(error.toString());
    }
    if (screens == 0)
        faults.append(QStringLiteral("There are no screens."));
    return faults;
}

/// Of both kinds of display; none where one of them can be used.
QStringList faultsOfDisplays()
{
    QStringList faults;
    for (const char* plugin : {"qxcb", "qwayland-generic"}) {
        QPluginLoader loader(QStringLiteral("%1/platforms/lib%2.so")
                                 .arg(QLibraryInfo::path(QLibraryInfo::PluginsPath), QLatin1String(plugin)));
        if (loader.load())
            return {};
        faults.append(loader.errorString());
    }
    return faults;
}

} // namespace

QStringList faultsOfBuild()
{
    return faultsOfDisplays() + faultsOfScreens();
}

} // namespace palvera
