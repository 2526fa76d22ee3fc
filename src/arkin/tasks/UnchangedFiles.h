#pragma once

#include "arkin/store/Vault.h"
#include "arkin/tasks/RunStore.h"
#include "contracts/host/ArkTask.h"

#include <span>

namespace zn::arkin {

/// Which files an earlier run of the same task has done already. A file is unchanged if the last run of the task that
/// worked on it made all its outputs, and since then these are the same: the file's version, the configuration that was
/// asked for, the task's settings and its macro template, the CAD application; the outputs, which are still the latest
/// versions of files in the vault, or stand on the disk; and everything that the file refers to, directly or not: no
/// newer version of it was made after that run had begun. Where nothing is known a file counts as changed, and so does
/// one that was printed. What changes without a new version, as a revision or a state of the workflow that was written
/// to the latest one, isn't seen.
class UnchangedFiles {
public:
    /// Both outlive it.
    UnchangedFiles(Vault& vault, zn::FileSystem& files)
        : m_vault(&vault)
        , m_files(&files)
    {
    }

    /// A sentence for each unchanged file, empty ones for the others. `run` has noted its CAD application.
    std::vector<zn::Text> sentences(const RunInfo& run, std::span<const zn::ArkSourceFile> files) const;

private:
    Vault* m_vault;
    zn::FileSystem* m_files;
};

} // namespace zn::arkin
