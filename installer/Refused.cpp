#include "installer/Refused.h"

#include <QObject>

#include <cerrno>
#include <system_error>

namespace palvera::installer {

QString textOf(const Refused& refused)
{
    switch (refused.why) {
    case Refusal::notSigned:
        return QString::fromLatin1(QT_TRANSLATE_NOOP("Installer", "The update is not signed by Palvera."));
    case Refusal::damaged:
        return QString::fromLatin1(QT_TRANSLATE_NOOP("Installer", "The update is damaged."));
    case Refusal::incomplete:
        return QString::fromLatin1(QT_TRANSLATE_NOOP("Installer", "The update is incomplete."));
    case Refusal::older:
        return QString::fromLatin1(
            QT_TRANSLATE_NOOP("Installer", "The update is older than the copy on this computer."));
    case Refusal::notAnnounced:
        return QString::fromLatin1(QT_TRANSLATE_NOOP("Installer", "The update is not the one that was announced."));
    case Refusal::otherComputer:
        return QString::fromLatin1(QT_TRANSLATE_NOOP("Installer", "The update is for another kind of computer."));
    case Refusal::strangeContent:
        return QString::fromLatin1(
            QT_TRANSLATE_NOOP("Installer", "The update holds something that does not belong there."));
    case Refusal::doesNotRun:
        return QString::fromLatin1(QT_TRANSLATE_NOOP("Installer", "The update does not run on this computer."));
    case Refusal::noRoom:
        return QStringLiteral("There is not enough room for the update on the disk of %1.").arg(refused.detail);
    case Refusal::notStored:
        return QStringLiteral("The update could not be stored: %1.").arg(refused.detail);
    case Refusal::busy:
        return QString::fromLatin1(
            QT_TRANSLATE_NOOP("Installer", "Another update is under way on this computer. Try again in a minute."));
    case Refusal::tooSlow:
        return QString::fromLatin1(QT_TRANSLATE_NOOP("Installer", "The update could not be read in time."));
    case Refusal::notUnpacked:
        return QString::fromLatin1(QT_TRANSLATE_NOOP("Installer", "The update could not be unpacked."));
    case Refusal::notAllowed:
        return QString::fromLatin1(QT_TRANSLATE_NOOP(
            "Installer", "You may not install updates on this computer. Ask whoever looks after it."));
    case Refusal::nobodyToAsk:
        return QString::fromLatin1(
            QT_TRANSLATE_NOOP("Installer", "Nobody could be asked whether updates may be installed on this computer."));
    case Refusal::foreignCopy:
        return QString::fromLatin1(
            QT_TRANSLATE_NOOP("Installer", "This copy of Palvera is not looked after by the installer."));
    case Refusal::notOurs:
        return QString::fromLatin1(
            QT_TRANSLATE_NOOP("Installer", "The installer is missing from this copy of the app."));
    case Refusal::nothingPrepared:
        return QString::fromLatin1(QT_TRANSLATE_NOOP("Installer", "There is no prepared update."));
    }
    Q_UNREACHABLE();
}

void throwNotStored()
{
    throw Refused{Refusal::notStored, QString::fromStdString(std::generic_category().message(errno))};
}

} // namespace palvera::installer
