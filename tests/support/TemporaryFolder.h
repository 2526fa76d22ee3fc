#pragma once

#include <filesystem>
#include <string>

namespace zn::test {

/// A folder of a test's own below the system's temporary folder. It is removed with the object, unless the test
/// has failed: then it is kept for a look and its path is printed.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

} // namespace zn::test
