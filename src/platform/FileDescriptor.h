#pragma once

#include <string_view>
#include <unistd.h>
#include <utility>

namespace zn {

/// Owns an open file, socket or pipe end; -1 is none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number)
        : m_number(number)
    {
    }
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~FileDescriptor() { close(); }

    explicit operator bool() const { return m_number >= 0; }
    int number() const { return m_number; }
    /// False, with `errno` set, if the system reports a late write failure.
    bool close() { return m_number < 0 || ::close(std::exchange(m_number, -1)) == 0; }

    /// Writes everything, going on after interruptions and short writes. False with `errno` set on a failure.
    bool writeAll(std::string_view bytes) const;

private:
    int m_number = -1;
};

} // namespace zn
