#include "addin/files/FileLogic.h"

namespace zn {

namespace {
constexpr std::int32_t permissionToRead = 1;
}

bool FileLogic::CanReadVaultFile(const Text& path)
{
    if (!m_vault)
        return true;
    Text resolved = path;
    replaceAll(resolved, u"<VaultPath>", m_vaultRoot);
    std::shared_ptr<IArkFolder> folder;
    std::shared_ptr<IArkFile> file;
    const Status status = m_vault->GetFileFromPath(resolved, &folder, file);
    if (status == E_ARK_PERMISSION_DENIED)
        return false;
    if (failed(status) || !folder || !file)
        return true;
    std::int32_t id = 0;
    bool allowed = false;
    checkStatus(file->GetId(id));
    checkStatus(folder->HasReadRight(permissionToRead, id, allowed));
    return allowed;
}

} // namespace zn
