#pragma once

#include "arkin/store/Vault.h"
#include "base/Value.h"

#include <functional>
#include <optional>
#include <vector>

namespace zn::arkin {

/// What a file's latest version must be to be found; what is left out fits all.
struct FileQuery {
    std::int32_t folderId = 0; ///< in this folder or below it
    /// Of names, in which "*" stands for any characters and "?" for one, without regard to case. Without either of
    /// them a part of the name is enough.
    zn::Text name;
    zn::Text state; ///< of the workflow, without regard to case
    /// A user who has it checked out.
    std::optional<std::string> checkedOutBy;
    std::optional<std::int64_t> leastSize; ///< in bytes, as the next
    std::optional<std::int64_t> mostSize;
    std::optional<std::int64_t> since; ///< when the version was made, in Unix seconds, as the next
    std::optional<std::int64_t> until;

    /// Only these files, if given; see `SearchIndex`.
    std::optional<std::vector<std::int32_t>> among;

    /// A value on its card, of any configuration.
    struct CardCondition {
        std::int32_t variableId = 0;
        std::function<bool(const zn::Value&)> fits;
    };
    std::vector<CardCondition> card;
};

struct FoundFile {
    Place place;
    zn::Text path; ///< below the vault's root
    std::int32_t version = 0;
    std::int64_t size = 0;
    std::int64_t madeAt = 0; ///< Unix seconds
    zn::Text state;
    std::string checkedOutBy; ///< empty for nobody
};

/// In the order of their paths, each in every folder that shows it and that the caller may read.
std::vector<FoundFile> findFiles(Vault& vault, const FileQuery& query);

/// Whether the text fits the pattern as `FileQuery::name` has it.
bool fitsPattern(zn::TextView text, zn::TextView pattern);

} // namespace zn::arkin
