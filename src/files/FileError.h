#pragma once

#include "async/Failure.h"

namespace palvera {

/// The file system refused.
class FileError : public Failure {
public:
    using Failure::Failure;
};

/// Throws a FileError for the file at `path`: its name, what could not be done ("cannot be read") and the reason that
/// `code`, an errno, stands for.
[[noreturn]] void throwFileError(const QString& path, const QString& what, int code);

} // namespace palvera
