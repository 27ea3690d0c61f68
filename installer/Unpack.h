#pragma once

#include "installer/Manifest.h"

#include "files/FileDescriptor.h"

namespace palvera::installer {

/// Unpacks the payload open as `archive`, from its beginning, into `folder`: regular files, folders and links that stay
/// inside, each in a folder that was listed before it, and exactly as many entries and bytes as `manifest` says. Of a
/// file's mode only whether it can be run is kept; owners, times and extended attributes are not. Each file is on the
/// disk then, the folders may not be. The process's umask must be 022. Throws Refused, with part of it unpacked.
void unpack(const Manifest& manifest, const FileDescriptor& archive, const FileDescriptor& folder);

} // namespace palvera::installer
