#pragma once

#include "arkin/store/FindFiles.h"

#include <filesystem>
#include <functional>
#include <memory>

namespace zn::arkin {

/// Names and card values of all files of a vault, to be found by any part of them. It stands in a file of its own,
/// which may be deleted at any time: it is made anew from the vault. One thread uses an index.
class SearchIndex {
public:
    /// Opens the file in the folder, or makes it. One that is damaged, or of another vault, is made anew. Raises
    /// `StatusError` E_ARK_DATABASE if it can't be made there. `vault` outlives it.
    SearchIndex(Vault& vault, const std::filesystem::path& folder);
    ~SearchIndex();

    /// Takes over what has changed in the vault since; `progress` gets what is done.
    void catchUp(const std::function<void(std::int64_t done)>& progress = {});

    /// Numbers of files whose name, or a value on whose card, has each word of the text, without regard to case, in
    /// their latest versions; at most so many. Words of three letters or more are looked up, shorter ones compared.
    std::vector<std::int32_t> find(zn::TextView words, std::size_t most);

private:
    void open(const std::filesystem::path& file);

    Vault& m_vault;
    std::unique_ptr<Database> m_database;
};

/// Removes the indexes from the folder.
void removeSearchIndexes(const std::filesystem::path& folder);

} // namespace zn::arkin
