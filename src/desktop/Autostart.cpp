#include "desktop/Autostart.h"

#include "files/AtomicFile.h"
#include "files/FileError.h"

#include <QDir>
#include <QFile>

namespace palvera {

void setAutostart(bool starts, const QString& name, const QString& program, const QString& configFolder)
{
    const auto folder = configFolder + QStringLiteral("/autostart");
    const auto path = folder + u'/' + name + QStringLiteral(".desktop");
    if (!starts) {
        QFile::remove(path);
        return;
    }
    const auto entry = QStringLiteral("[Desktop Entry]\nType=Application\nName=Palvera\nIcon=palvera\n"
                                      "Exec=%1 --background\nX-GNOME-Autostart-enabled=true\n")
                           .arg(quotedForEntry(program));
    try {
        QDir().mkpath(folder);
        writeFileAtomically(path, entry.toUtf8(), folder);
    } catch (const FileError&) { // the program is then started by hand
    }
}

QString quotedForEntry(const QString& word)
{
    QString quoted;
    for (const auto character : word) {
        // Each backslash stands twice: an entry's format has it escaped once more.
        if (QStringLiteral("\"`$\\").contains(character))
            quoted += QStringLiteral("\\\\");
        quoted += QString(character == u'%' || character == u'\\' ? 2 : 1, character);
    }
    return u'"' + quoted + u'"';
}

} // namespace palvera
