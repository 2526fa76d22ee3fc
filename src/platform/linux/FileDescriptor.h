#pragma once

#include <unistd.h>
#include <utility>

namespace zn {

/// Owns an open file; -1 is none.
class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1)
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
    /// False if the system reports a late write failure.
    bool close() { return m_number < 0 || ::close(std::exchange(m_number, -1)) == 0; }

private:
    int m_number;
};

} // namespace zn
