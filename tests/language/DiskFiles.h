#pragma once

#include "language/FileAccess.h"

#include <filesystem>

namespace zn::test {

/// Real files below one folder, which is the drive "C:" to a macro.
class DiskFiles : public language::FileAccess {
public:
    explicit DiskFiles(std::filesystem::path root)
        : m_root(std::move(root))
    {
        std::filesystem::create_directories(m_root / "temp");
    }

    std::unique_ptr<language::OpenedFile> open(const Text& path, language::FileMode mode) override;
    bool facts(const Text& path, language::FileFacts& facts) override;
    void setAttributes(const Text& path, std::uint32_t attributes) override;
    std::vector<language::FolderEntry> list(const Text& folder) override;
    void remove(const Text& path) override;
    void createFolder(const Text& path) override;
    void removeFolder(const Text& path) override;
    void rename(const Text& from, const Text& to) override;
    void copy(const Text& from, const Text& to) override;
    Text currentFolder() override { return m_current; }
    void setCurrentFolder(const Text& path) override { m_current = path; }
    Text temporaryFolder() override { return u"C:\\temp"; }

private:
    std::filesystem::path native(const Text& path) const;

    std::filesystem::path m_root;
    Text m_current = u"C:\\";
};

} // namespace zn::test
