#include "arkin/commands/frame/LaunchItem.h"

namespace zn::arkin {

zn::ArkSelItem launchItem(Session& session, const std::string& machinePath, std::int32_t version,
    const zn::Text& configuration, bool versionMustBe)
{
    auto& vault = session.vault();
    const auto path = session.vaultPathOf(machinePath);
    zn::ArkSelItem item;
    item.version = version > 0 ? version : -1;
    item.configuration = configuration;
    if (const auto place = vault.find(path)) {
        if (versionMustBe)
            vault.version(place->fileId, version);
        item.fileId = place->fileId;
        item.folderId = place->folderId;
        item.path = vault.pathOf(*place);
    } else if (const auto folder = vault.findFolder(path)) {
        item.itemType = zn::ArkItemType::Folder;
        item.folderId = *folder;
        item.path = path;
    } else {
        session.fileAt(machinePath); // says what is the matter
    }
    return item;
}

} // namespace zn::arkin
