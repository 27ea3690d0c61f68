#pragma once

#include "localplatform/Upload.h"

namespace palvera::local {

/// Remembers each stored part the moment it is answered, a line a part, so that a killed platform knows it again.
/// One thread at a time.
class PartsLog {
public:
    /// Writes into `folder`; remembers nothing when it is empty.
    explicit PartsLog(const QString& folder) : m_folder(folder) {}

    void append(const Upload& upload, int part) const;
    /// Puts the parts that were logged into `upload`. A last line that was cut short is left out.
    void restore(Upload& upload) const;
    void remove(const Upload& upload) const;

private:
    QString pathOf(const Upload& upload) const;

    QString m_folder;
};

} // namespace palvera::local
