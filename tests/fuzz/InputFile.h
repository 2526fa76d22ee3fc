#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace zn::fuzz {

/// An input as a file that readers can open by its path. It lies in memory only.
class InputFile {
public:
    explicit InputFile(std::string_view content)
        : m_file(memfd_create("input", MFD_CLOEXEC))
    {
        const auto size = static_cast<ssize_t>(content.size());
        if (m_file < 0 || write(m_file, content.data(), content.size()) != size)
            std::abort();
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() { close(m_file); }

    std::filesystem::path path() const { return "/proc/self/fd/" + std::to_string(m_file); }

private:
    int m_file;
};

} // namespace zn::fuzz
