#pragma once

#include "files/FileError.h"

namespace palvera {

// Why an upload ended, where it is neither storage nor the platform nor the network.

/// What stands in the way stays there: the file is gone, empty or not what it was, another one is on its way to its
/// place, or the platform cuts it wrongly. Trying again by itself changes nothing.
class CannotSend : public FileError {
public:
    using FileError::FileError;
};

/// The source file is no longer the file that the upload began with.
class SourceChanged final : public CannotSend {
public:
    SourceChanged();
};

/// The platform does not know the upload, or no longer: its parts are lost, and only a fresh one can succeed.
class UploadForgotten final : public Failure {
public:
    using Failure::Failure;
};

/// Why the file at `path` cannot be sent, for the user; empty when nothing speaks against it. May block on the disk.
QString objectionToSource(const QString& path);

} // namespace palvera
