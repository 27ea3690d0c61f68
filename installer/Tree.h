#pragma once

#include "files/FileDescriptor.h"

#include <QByteArrayList>

namespace palvera::installer {

/// Files and folders reached from an open folder by single names, and never through a link: so no name, whoever wrote
/// it, leads out of that folder.

/// The folder `name` in `parent`. Below zero, with errno set, when there is none or a link stands there.
FileDescriptor openFolder(const FileDescriptor& parent, const QByteArray& name);
/// The file `name` in `parent`, to read. Below zero, with errno set, when there is none or a link stands there.
FileDescriptor openFile(const FileDescriptor& parent, const QByteArray& name);
/// What lies in `folder`, sorted. Throws Refused.
QByteArrayList namesIn(const FileDescriptor& folder);
/// Removes `name` from `parent` with all that is in it. False, with errno set, when something stays; nothing there is
/// fine.
bool removeTree(const FileDescriptor& parent, const QByteArray& name);
/// Writes all of `bytes`. Throws Refused.
void writeAll(const FileDescriptor& file, QByteArrayView bytes);
/// Has the disk hold what was written to `file`, which may be a folder. Throws Refused.
void sync(const FileDescriptor& file);
/// Does so with `folder` and every folder below it. Throws Refused.
void syncFolders(const FileDescriptor& folder);

} // namespace palvera::installer
