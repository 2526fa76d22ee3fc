#pragma once

#include "arkin/vault/ObjectContext.h"
#include "contracts/host/ArkVault.h"

namespace zn::arkin {

/// A folder of the vault. Subfolders that the caller may not read are left out.
class FolderObject final : public zn::IArkFolder {
public:
    FolderObject(ContextRef context, std::int32_t folderId)
        : m_context(std::move(context))
        , m_folderId(folderId)
    {
    }

    zn::Status GetId(std::int32_t& id) override;
    zn::Status GetLocalPath(zn::Text& path) override;
    zn::Status GetFirstFilePosition(std::shared_ptr<zn::IArkPosition>& position) override;
    zn::Status GetNextFile(zn::IArkPosition& position, std::shared_ptr<zn::IArkFile>& file) override;
    zn::Status GetFirstSubFolderPosition(std::shared_ptr<zn::IArkPosition>& position) override;
    zn::Status GetNextSubFolder(zn::IArkPosition& position, std::shared_ptr<zn::IArkFolder>& folder) override;
    zn::Status DeleteFile(std::int32_t window, std::int32_t fileId, std::int32_t flags) override;
    zn::Status HasReadRight(std::int32_t permission, std::int32_t fileId, bool& allowed) override;

private:
    ContextRef m_context;
    std::int32_t m_folderId;
};

} // namespace zn::arkin
