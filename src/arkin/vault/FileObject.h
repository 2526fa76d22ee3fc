#pragma once

#include "arkin/vault/ObjectContext.h"
#include "contracts/host/ArkVault.h"

namespace zn::arkin {

/// A file of the vault.
class FileObject final : public zn::IArkFile {
public:
    FileObject(ContextRef context, std::int32_t fileId)
        : m_context(std::move(context))
        , m_fileId(fileId)
    {
    }
    /// A file of an enumeration: name and current version are those of the moment when the enumeration began, so that
    /// walking a large folder asks the database once.
    FileObject(ContextRef context, FileRow listed)
        : m_context(std::move(context))
        , m_fileId(listed.id)
        , m_listed(std::move(listed))
    {
    }

    zn::Status GetId(std::int32_t& id) override;
    zn::Status GetCurrentVersion(std::int32_t& version) override;
    zn::Status GetLocalPath(std::int32_t folderId, zn::Text& path) override;
    zn::Status IsCheckedOut(std::int16_t& flag) override;
    zn::Status CheckOut(std::int32_t folderId, std::int32_t window, std::int32_t flags) override;
    zn::Status GetVariableEnumerator(
        std::int32_t window, std::shared_ptr<zn::IArkVariableEnumerator>& enumerator) override;
    zn::Status GetVersionInfo(const zn::Value& version, std::int32_t folderId, std::vector<zn::ObjectRef>& values,
        std::vector<zn::Text>& configurations, zn::ArkVersionInfo& info) override;

private:
    FileRow row() { return m_listed ? *m_listed : m_context->vault.file(m_fileId); }

    ContextRef m_context;
    std::int32_t m_fileId;
    std::optional<FileRow> m_listed;
};

} // namespace zn::arkin
