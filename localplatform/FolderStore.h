#pragma once

#include "localplatform/ByteStore.h"

namespace palvera::local {

/// Objects in `folder`/objects, each under its own file name; parts on their way in `folder`/staging.
std::unique_ptr<ByteStore> makeFolderStore(const QString& folder);

} // namespace palvera::local
