#pragma once

#include "async/Failure.h"

#include <cerrno>

namespace palvera {

/// The file system refused.
class FileError : public Failure {
public:
    /// `code` is an errno, or 0.
    explicit FileError(const QString& text, int code = 0) : Failure(text), m_code(code) {}

    /// Whether what there is to write on is full.
    bool isFull() const { return m_code == ENOSPC || m_code == EDQUOT; }

private:
    int m_code;
};

/// Throws a FileError for the file at `path`. `text` has places for its name and for the reason that `code`, an errno,
/// stands for; it is translated here, since that may change errno.
[[noreturn]] void throwFileError(const QString& path, const char* text, int code);

} // namespace palvera
