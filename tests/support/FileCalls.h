#pragma once

#include <functional>
#include <string>
#include <vector>

namespace palvera {

/// Lists the calls by which the whole program, on any thread, writes, syncs and renames files for as long as this
/// object lives; one object at a time. Works in test programs that have FileCalls.cpp among their own sources: it
/// stands in for the system's functions there.
class FileCalls {
public:
    FileCalls();
    ~FileCalls();
    FileCalls(const FileCalls&) = delete;
    FileCalls& operator=(const FileCalls&) = delete;

    /// The calls so far in their order, each with the path that the file then had: "write /a" (pwrite too; several in
    /// succession are one; none takes more than 300 bytes, as a system may), "fsync /a", "fdatasync /a", "rename /a
    /// /b". Those that failed are among them.
    std::vector<std::string> all() const;
    /// From here on, calls that begin like `start` do nothing and fail with `error` (an errno), in place of those of an
    /// earlier `fail`.
    void fail(const std::string& start, int error);
    /// What happens, once, while the next fdatasync is under way.
    std::function<void()> whileSyncing;
};

} // namespace palvera
