#pragma once

#include "arkin/vault/ObjectContext.h"
#include "contracts/host/ArkVault.h"

namespace zn::arkin {

/// The open vault as add-ins see it. Objects that it gives out share its context; all of them are used by the thread
/// of the vault's database connection. No exception leaves an operation.
class VaultObject final : public zn::IArkVault, public zn::IArkVariableMgr {
public:
    /// `vault` outlives this object and everything that it gives out.
    explicit VaultObject(Vault& vault)
        : VaultObject(std::make_shared<ObjectContext>(vault))
    {
    }
    /// Another object for the same open vault.
    explicit VaultObject(ContextRef context)
        : m_context(std::move(context))
    {
    }

    Vault& vault() { return m_context->vault; }
    /// Where this object asks a person; null, as at the beginning, if nobody can be asked. Outlives the object.
    void setDesktop(VaultDesktop* desktop) { m_context->desktop = desktop; }

    zn::Status GetRootFolderPath(zn::Text& path) override;
    zn::Status GetName(zn::Text& name) override;
    zn::Status GetFileFromPath(
        zn::TextView path, std::shared_ptr<zn::IArkFolder>* folder, std::shared_ptr<zn::IArkFile>& file) override;
    zn::Status GetFolderFromPath(zn::TextView path, std::shared_ptr<zn::IArkFolder>& folder) override;
    zn::Status CreateUtility(zn::ArkUtility kind, zn::ObjectRef& utility) override;
    /// `E_ARK_NO_DESKTOP` without a desktop. Of `flags` the bit 2 lets the user pick several files; bit 8, only files
    /// that exist, holds in any case, and the other bits mean nothing here.
    zn::Status BrowseForFile(std::int32_t window, std::int32_t flags, zn::TextView title, zn::TextView filter,
        std::vector<zn::Text>& paths) override;
    zn::Status BrowseForFolder(
        std::int32_t window, zn::TextView title, std::shared_ptr<zn::IArkFolder>& folder) override;
    /// The sentence of the last failed operation if it failed with this status, because it names the file and the
    /// reason; else the one of the table.
    zn::Status GetErrorText(zn::Status code, zn::Text& name, zn::Text& description) override;

    zn::Status GetFirstVariablePosition(std::shared_ptr<zn::IArkPosition>& position) override;
    zn::Status GetNextVariable(zn::IArkPosition& position, std::shared_ptr<zn::IArkVariable>& variable) override;

private:
    ContextRef m_context;
};

} // namespace zn::arkin
