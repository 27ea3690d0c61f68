#pragma once

#include "localplatform/Faults.h"

#include <filesystem>

namespace palvera::local {

/// The rules that `json` describes (docs/local-platform.md says how). Throws std::runtime_error, naming what is wrong.
std::vector<FaultRule> readFaultRules(const QByteArray& json);

/// Keeps a script in step with a file: its rules come anew whenever the file changes. Any thread.
class FaultFile {
public:
    /// Reads the file. Throws when it cannot be read or holds no rules.
    FaultFile(std::filesystem::path path, FaultScript& script);

    /// Reads the file again if it has changed. A file that does not read leaves the rules as they are; the reason goes
    /// to standard error.
    void refresh();

private:
    void read();

    const std::filesystem::path m_path;
    FaultScript& m_script;
    std::mutex m_lock;
    std::filesystem::file_time_type m_changed; // guarded by m_lock
};

} // namespace palvera::local
