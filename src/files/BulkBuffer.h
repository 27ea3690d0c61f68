#pragma once

#include <QtGlobal>

#include <cstdlib>
#include <memory>
#include <span>

namespace palvera {

/// Memory for bytes on their way to the disk, kept and used again. One thread at a time.
///
/// It lies in huge pages where the system has them: with small ones, the first use of eight buffers of 32 MiB alone
/// was measured to cost more processor time than sending a gigabyte. Pages cost memory from their first use on.
class BulkBuffer {
public:
    /// Room for `size` bytes. Throws FileError when there is not so much memory.
    explicit BulkBuffer(qint64 size);

    qint64 size() const { return m_size; }
    std::span<char> first(qint64 length) { return {m_bytes.get(), static_cast<std::size_t>(length)}; }

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    qint64 m_size;
    std::unique_ptr<char, Free> m_bytes;
};

} // namespace palvera
