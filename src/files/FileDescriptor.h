#pragma once

#include <QString>

#include <utility>

namespace palvera {

/// Owns one open file of the operating system and closes it. One thread at a time, save for reads at a position.
class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1) : m_number(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~FileDescriptor();

    /// Below zero when there is none.
    int number() const { return m_number; }
    /// Closes the file early and says whether that went well: some file systems report a failed write only here.
    bool close();

private:
    int m_number;
};

} // namespace palvera
