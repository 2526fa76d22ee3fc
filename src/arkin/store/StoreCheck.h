#pragma once

#include "arkin/store/Vault.h"

namespace zn::arkin {

struct CheckReport {
    /// What is wrong, a sentence each. Empty when the store is sound.
    std::vector<std::string> problems;
    /// What a person may want to know beyond that.
    std::vector<std::string> notes;
    std::int64_t files = 0;
    std::int64_t deletedFiles = 0;
    std::int64_t versions = 0;
    std::int64_t contents = 0; ///< each content counts once
    std::int64_t bytes = 0;    ///< of these contents
    std::int64_t checkedOut = 0;
};

/// Verifies everything in the store: the database itself, every count and reference, and every content by its hash.
/// Only reads. `progress` is called with the number of contents read and their total.
CheckReport checkStore(Store& store, const std::function<void(std::int64_t done, std::int64_t total)>& progress = {});

/// A content and one version that holds it, for sentences.
struct Holder {
    Content content;
    std::string name;
    std::int32_t version = 0;
};
/// The contents of all versions, each once, in the order of their hashes.
std::vector<Holder> heldContents(soci::session& session);
/// Reads the content again; a sentence if it is missing, damaged or can't be read.
std::optional<std::string> problemOf(const Archive& archive, const Holder& holder);

/// Says which contents versions need; they are read when the first one is asked for.
Archive::IsNeeded neededContents(Database& database);

} // namespace zn::arkin
