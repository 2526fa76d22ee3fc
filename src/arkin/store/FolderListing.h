#pragma once

#include "arkin/store/Vault.h"

#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace zn::arkin {

/// What a list of files shows of one of them.
struct ListedFile {
    std::int32_t fileId = 0;
    std::int32_t folderId = 0;
    std::string name; ///< UTF-8, as are all texts here
    std::int32_t latestVersion = 0;
    std::optional<std::int64_t> size; ///< of the latest version in bytes; none if the vault has lost its row
    std::int64_t madeAt = 0;          ///< Unix seconds; 0 without a size
    std::string state;                ///< of the workflow
    std::string checkedOutBy;         ///< empty for nobody, as is the machine
    std::string machine;              ///< on which it is checked out
};

/// The files of a folder in the order of their names, by one query for all of them. Asks for no right.
std::vector<ListedFile> listFolder(Vault& vault, std::int32_t folderId);

/// These files in each folder that shows them and that the caller may read, in the order of `fileIds`. Those that are
/// deleted are left out.
std::vector<ListedFile> listFiles(Vault& vault, std::span<const std::int32_t> fileIds);

/// The values on the cards of a folder's files in their latest versions, one behind the other, folded for searches.
std::unordered_map<std::int32_t, std::string> cardTextsOf(Vault& vault, std::int32_t folderId);

/// The files' own values of one card variable, in their latest versions, by file.
std::unordered_map<std::int32_t, std::string> cardColumnOf(
    Vault& vault, std::int32_t folderId, std::int32_t variableId);

} // namespace zn::arkin
