#include "addin/files/FileLogic.h"

namespace zn {

FileLogic::FileLogic(const Platform& platform)
    : m_platform(platform)
{
}

void FileLogic::Initialize(std::shared_ptr<IArkVault> vault, TaskKind taskKind, bool replaceExisting)
{
    m_records.clear();
    m_notedPaths.clear();
    m_failures.clear();
    m_refused.clear();
    m_currentSource = nullptr;
    m_runPaths = nullptr;
    m_vault = std::move(vault);
    m_taskKind = taskKind;
    m_replaceExisting = replaceExisting;
    if (!m_vault)
        throw StatusError(E_POINTER);
    checkStatus(m_vault->GetRootFolderPath(m_vaultRoot));
}

void FileLogic::SetCurrentSource(OutputRecord* record) { m_currentSource = record; }

} // namespace zn
