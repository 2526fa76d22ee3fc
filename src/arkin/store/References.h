#pragma once

#include "arkin/store/Files.h"

namespace zn::arkin {

/// A version of a file refers to another file in one version.
struct ReferenceRow {
    std::int32_t fileId = 0;
    std::int32_t version = 0;
    std::int32_t toFileId = 0;
    std::int32_t toFolderId = 0; ///< where the target was seen when the reference was made
    std::int32_t toVersion = 0;
};

class References {
public:
    explicit References(Database& database)
        : m_database(database)
    {
    }

    /// The references of each version, in the order of `asked`; each list ordered by the target.
    std::vector<std::vector<ReferenceRow>> from(std::span<const FileVersion> asked);
    std::vector<ReferenceRow> from(std::int32_t fileId, std::int32_t version);
    /// Who refers to the file, in any version.
    std::vector<ReferenceRow> to(std::int32_t fileId);

    /// Creates the references; one to the same target is replaced. Inside a transaction, as the following.
    void write(std::span<const ReferenceRow> references);
    void copy(std::int32_t fileId, std::int32_t fromVersion, std::int32_t toVersion);

private:
    Database& m_database;
};

} // namespace zn::arkin
