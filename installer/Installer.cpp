#include "installer/Installer.h"

#include "installer/BuildsFolder.h"
#include "installer/Built.h"
#include "installer/Refused.h"
#include "installer/Tree.h"
#include "installer/Trial.h"
#include "installer/Unpack.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace palvera::installer {

namespace {

constexpr qint64 roomForFile = 4096; // bytes that a file takes beside its own, at most, or a folder

void requireMeant(const Manifest& manifest, const Announced& announced)
{
    if (manifest.product != QLatin1StringView("palvera") || manifest.system != QLatin1StringView(builtSystem))
        throw Refused{Refusal::otherComputer};
    if (announced.version != manifest.version || announced.build != QString::number(manifest.build))
        throw Refused{Refusal::notAnnounced};
}

/// A running program locks it, and the next update is compared with it. Made before anything is unpacked, so that an
/// archive with a file of that name is refused.
void writeManifest(const FileDescriptor& folder, const Manifest& manifest)
{
    FileDescriptor file(
        ::openat(folder.number(), "manifest.json", O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644));
    if (file.number() < 0)
        throwNotStored();
    writeAll(file, manifest.text);
    sync(file);
    if (!file.close())
        throwNotStored();
}

} // namespace

Installer::Installer(QString root, QList<PublicKey> keys) : m_root(std::move(root)), m_keys(std::move(keys)) {}

/// Compared as text and never opened, so that no link of the caller's leads anywhere.
void Installer::requireTarget(const QString& target) const
{
    if (target != m_root)
        throw Refused{Refusal::foreignCopy};
}

void Installer::prepare(const FileDescriptor& imageFile, const QString& target, const Announced& announced,
                        const std::function<void(pid_t)>& onTrial)
{
    requireTarget(target);
    BuildsFolder folder(m_root);
    const Image image(imageFile, m_keys);
    const auto& manifest = image.manifest();
    requireMeant(manifest, announced);
    if (manifest.build >= folder.current() && folder.manifestOf(manifest.build) == manifest.text)
        return;
    if (manifest.build <= folder.current())
        throw Refused{Refusal::older};
    folder.requireRoom(manifest.size + manifest.unpackedSize + manifest.files * roomForFile);

    const auto payload = folder.makeFile();
    image.copyPayloadTo(payload);
    if (::lseek(payload.number(), 0, SEEK_SET) != 0)
        throwNotStored();
    const auto build = folder.makeBuild();
    writeManifest(build, manifest);
    unpack(manifest, payload, build);
    const auto greeting = QStringLiteral("Palvera %1 (%2)\n").arg(manifest.version, QString::number(manifest.build));
    tryBuild(build, greeting.toUtf8(), trialLimit, onTrial);
    syncFolders(build); // its files are on the disk already
    folder.adopt(manifest.build);
}

void Installer::install(const QString& target)
{
    requireTarget(target);
    BuildsFolder folder(m_root);
    const auto newest = folder.newest(), current = folder.current();
    if (newest == 0 || newest < current)
        throw Refused{Refusal::nothingPrepared};
    if (newest > current) // else another user has done it, or the answer was lost
        folder.switchTo(newest);
    folder.sweep();
}

} // namespace palvera::installer
