#pragma once

#include "arkin/store/Files.h"

#include <span>
#include <unordered_map>
#include <vector>

namespace zn::arkin {

class Vault;

/// A file or folder that the list begins with.
struct ClosureStart {
    std::int32_t fileId = 0; ///< 0 for a folder
    std::int32_t folderId = 0;
    std::int32_t version = 0; ///< 0 or less for the latest
};

/// The files of some starts with all that they refer to, directly or not, as the database holds it: unordered, cycles
/// included, and without regard to rights.
struct ReferenceClosure {
    struct File {
        zn::Text name;
        std::int32_t latestVersion = 0;
    };
    struct Start {
        std::size_t position = 0; ///< of the start that brought the file
        Place place;
        std::int32_t version = 0; ///< a real version
    };
    struct Target {
        Place place;
        std::int32_t version = 0;
    };

    std::unordered_map<std::int32_t, File> files;
    std::vector<Start> starts;
    /// What a version of a file refers to, by `key`.
    std::unordered_map<std::int64_t, std::vector<Target>> references;
    /// The drawings, in their latest versions, that refer to a file; by the file's id.
    std::unordered_map<std::int32_t, std::vector<Target>> drawings;
    /// The sheets of a drawing's version, by `key`, in the drawing's order; by name where only the card knows them.
    /// Only of drawings that have any.
    std::unordered_map<std::int64_t, std::vector<zn::Text>> sheets;

    static std::int64_t key(std::int32_t fileId, std::int32_t version)
    {
        return (std::int64_t{fileId} << 32) | static_cast<std::uint32_t>(version);
    }
};

/// Whether a file of this name is a drawing of the CAD application.
bool isDrawing(zn::TextView name);

/// Reads all of it by one query, whatever the number of files; the folders on the way are known to `vault.folders()`
/// afterwards. `asBuilt`: referenced files in the version to which is referred, else in their latest. Starts that the
/// vault doesn't have (any more) are left out. A reference leads to the folder in which it was made, or to the file's
/// first one if it has left that.
ReferenceClosure readReferenceClosure(Vault& vault, std::span<const ClosureStart> starts, bool asBuilt);

} // namespace zn::arkin
