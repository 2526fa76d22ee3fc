#pragma once

#include "arkin/store/LeftOut.h"
#include "arkin/store/Vault.h"

namespace zn::arkin {

/// A file to bring to the local view.
struct GetRequest {
    Place place;
    std::int32_t version = 0; ///< 0 for the latest
};

/// What becomes of a local copy that holds what the vault doesn't know.
enum class LocalChanges {
    Refuse, ///< raises E_ARK_LOCAL_FILE_CHANGED
    Discard,
};

/// Brings files to the local view, read-only; a copy that has the content already is left as it is. A file that is
/// checked out here keeps its copy, and gets one, writable, if it has none. Raises E_ARK_PERMISSION_DENIED without the
/// right to read, E_ARK_NOT_IN_VAULT, E_ARK_NO_SUCH_VERSION; files before the failed one have come.
void getFiles(Vault& vault, std::span<const GetRequest> requests, LocalChanges changes = LocalChanges::Refuse);
/// The same for whoever has more to do than one file: a file that can't be brought doesn't hinder the others and is in
/// what is returned. A full disk, which concerns all, is raised.
std::vector<LeftOut> getWhatCanBeGot(Vault& vault, std::span<const GetRequest> requests);

/// Where the files of requests would stand in the local view, and in which versions. Those that the vault doesn't show
/// any more are left out.
std::vector<LocalCopyUse> localCopies(Vault& vault, std::span<const GetRequest> requests);

/// That one file refers to another.
struct FileEdge {
    std::int32_t fromFileId = 0;
    std::int32_t toFileId = 0;
};

/// Files with what they refer to.
struct FileTree {
    std::vector<GetRequest> files;    ///< each once
    std::vector<FileEdge> references; ///< all that were followed
};

/// The files together with what they refer to, and so on; a file that is asked for keeps its version. `asBuilt` takes
/// referenced files in the version to which is referred, otherwise in the latest. Referenced files that were deleted
/// are left out.
FileTree withReferences(Vault& vault, std::span<const GetRequest> requests, bool asBuilt);

} // namespace zn::arkin
