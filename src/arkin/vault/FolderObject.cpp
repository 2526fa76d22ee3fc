#include "arkin/vault/FolderObject.h"

#include "arkin/store/DeleteFile.h"
#include "arkin/vault/FileObject.h"
#include "arkin/vault/Position.h"

#include <algorithm>

namespace zn::arkin {

using zn::S_OK;
using zn::Status;

namespace {

constexpr std::int32_t readPermission = 1;

} // namespace

Status FolderObject::GetId(std::int32_t& id)
{
    id = m_folderId;
    return S_OK;
}

Status FolderObject::GetLocalPath(zn::Text& path)
{
    return guarded(*m_context, [&] {
        path = m_context->vault.local().pathOf(m_folderId, u"");
        return S_OK;
    });
}

Status FolderObject::GetFirstFilePosition(std::shared_ptr<zn::IArkPosition>& position)
{
    return guarded(*m_context, [&] {
        m_context->vault.permissions().refresh();
        m_context->vault.permissions().require(m_folderId, Right::Read);
        position = std::make_shared<Position<FileRow>>(m_context->vault.files().inFolder(m_folderId));
        return S_OK;
    });
}

Status FolderObject::GetNextFile(zn::IArkPosition& position, std::shared_ptr<zn::IArkFile>& file)
{
    return guarded(*m_context, [&] {
        file = std::make_shared<FileObject>(m_context, Position<FileRow>::take(position));
        return S_OK;
    });
}

Status FolderObject::GetFirstSubFolderPosition(std::shared_ptr<zn::IArkPosition>& position)
{
    return guarded(*m_context, [&] {
        Permissions& permissions = m_context->vault.permissions();
        permissions.refresh();
        std::vector<std::int32_t> folders = m_context->vault.folders().children(m_folderId);
        std::erase_if(folders, [&](std::int32_t id) { return !permissions.allowed(id, Right::Read); });
        position = std::make_shared<Position<std::int32_t>>(std::move(folders));
        return S_OK;
    });
}

Status FolderObject::GetNextSubFolder(zn::IArkPosition& position, std::shared_ptr<zn::IArkFolder>& folder)
{
    return guarded(*m_context, [&] {
        folder = std::make_shared<FolderObject>(m_context, Position<std::int32_t>::take(position));
        return S_OK;
    });
}

Status FolderObject::DeleteFile(std::int32_t, std::int32_t fileId, std::int32_t)
{
    return guarded(*m_context, [&] {
        whenThereIsRoom(m_context->vault, [&] { deleteFile(m_context->vault, {fileId, m_folderId}); });
        return S_OK;
    });
}

Status FolderObject::HasReadRight(std::int32_t permission, std::int32_t, bool& allowed)
{
    return guarded(*m_context, [&] {
        if (permission != readPermission)
            throw zn::StatusError(zn::E_INVALIDARG, "Only the permission 1, to read, can be asked for.");
        m_context->vault.permissions().refresh();
        allowed = m_context->vault.permissions().allowed(m_folderId, Right::Read);
        return S_OK;
    });
}

} // namespace zn::arkin
