#pragma once

#include "zentrel/application/Confinement.h"
#include "zentrel/application/MacroFiles.h"

namespace zn::zentrel {

/// The machine's files as a macro reaches them, within what its confinement allows. Every member raises `pathRefused`
/// for a path outside, whether anything is there or not.
class ConfinedFiles : public zn::language::FileAccess {
public:
    /// The references outlive this object. A confined macro begins in the folder `own`: what it does by names without
    /// a folder is nothing to those who look after the folder in which the process was started.
    ConfinedFiles(zn::FileSystem& files, Confinement& confinement, const std::filesystem::path& own)
        : m_files(files, files.fromMachine(confinement.confines() ? own : std::filesystem::current_path()))
        , m_confinement(confinement)
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
    Text currentFolder() override { return m_files.currentFolder(); }
    void setCurrentFolder(const Text& path) override;
    Text temporaryFolder() override { return m_files.temporaryFolder(); }

private:
    Text reached(const Text& path);
    Text reachedBelow(const Text& path);

    MacroFiles m_files;
    Confinement& m_confinement;
};

} // namespace zn::zentrel
