// Shows every control. With --screenshot it writes a picture of itself, without a display, and ends.

#include "controls/Fonts.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTimer>

namespace {

/// Once the pictures and animations have settled.
constexpr int settled = 700; // ms

void takePicture(QQmlApplicationEngine& engine, const QString& path)
{
    QTimer::singleShot(settled, &engine, [&engine, path] {
        auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
        bool saved = window && window->grabWindow().save(path);
        QCoreApplication::exit(saved ? 0 : 1);
    });
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    palvera::loadFonts();
    QCommandLineParser options;
    options.setApplicationDescription("Shows every control of Palvera.");
    options.addHelpOption();
    QCommandLineOption dark("dark", "Begin in the dark appearance."),
        page("page", "The page to begin with, from 0.", "number", "0"),
        screenshot("screenshot", "Write a picture to this file and end.", "file");
    options.addOptions({dark, page, screenshot});
    options.process(application);

    QQmlApplicationEngine engine;
    engine.addImportPath("qrc:/qt/qml");
    engine.setInitialProperties({{"dark", options.isSet(dark)}, {"page", options.value(page).toInt()}});
    engine.load(QUrl("qrc:/qt/qml/Palvera/Gallery/Gallery.qml"));
    if (engine.rootObjects().isEmpty())
        return 1;
    if (options.isSet(screenshot))
        takePicture(engine, options.value(screenshot));
    return QCoreApplication::exec();
}
