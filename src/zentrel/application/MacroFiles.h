#pragma once

#include "language/FileAccess.h"
#include "platform/FileSystem.h"

namespace zn::zentrel {

using zn::Text;

/// The machine's files as macros reach them, by backslash paths through the drive map.
class MacroFiles : public zn::language::FileAccess {
public:
    /// `files` outlives this object.
    explicit MacroFiles(zn::FileSystem& files);
    /// With another current folder at first than the process's.
    MacroFiles(zn::FileSystem& files, Text current)
        : m_files(files)
        , m_current(std::move(current))
    {
    }

    std::unique_ptr<zn::language::OpenedFile> open(const Text& path, zn::language::FileMode mode) override;
    bool facts(const Text& path, zn::language::FileFacts& facts) override;
    void setAttributes(const Text& path, std::uint32_t attributes) override;
    std::vector<zn::language::FolderEntry> list(const Text& folder) override;
    void remove(const Text& path) override;
    void createFolder(const Text& path) override;
    void removeFolder(const Text& path) override;
    void rename(const Text& from, const Text& to) override;
    void copy(const Text& from, const Text& to) override;
    Text currentFolder() override { return m_current; }
    void setCurrentFolder(const Text& path) override;
    Text temporaryFolder() override { return m_files.temporaryFolder(); }

    /// The canonical path, a relative one from the current folder on.
    Text absolute(const Text& path) const;

private:
    std::filesystem::path machine(const Text& path) const { return m_files.toMachine(absolute(path)); }

    zn::FileSystem& m_files;
    Text m_current;
};

} // namespace zn::zentrel
