#pragma once

#include "localplatform/ByteStore.h"

namespace palvera::local {

/// Objects in `folder`/objects, each under its own file name; parts on their way in `folder`/staging.
std::unique_ptr<ByteStore> makeFolderStore(const QString& folder);
/// The file at `path` as an object. Throws std::system_error.
std::shared_ptr<const StoredObject> openObject(const QString& path);

} // namespace palvera::local
