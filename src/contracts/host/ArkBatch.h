#pragma once

#include "base/Object.h"
#include "contracts/host/Records.h"

#include <memory>
#include <vector>

/// The vault's batch utilities: work is noted first and then done for all files in one transaction.
namespace zn {

class IArkVault;

class IArkBatchAdd : public Object {
public:
    /// Notes one file for adding. `destName` null means that the file keeps its name; the flags are then 0, else 64.
    /// The destination folder is made in the vault if it is missing.
    virtual Status AddFile(
        TextView sourcePath, TextView destFolderPath, std::int32_t window, const Text* destName, std::int32_t flags)
        = 0;
    /// Adds all noted files; they are then checked out to the calling user. `results` gets one element for each file,
    /// in any order, with the failures of single files. `count` goes in as the number of files and comes out as the
    /// number that were added.
    virtual Status Commit(std::int32_t window, std::vector<ArkAddResult>& results, std::int32_t& count) = 0;
};

class IArkBatchCardUpdate : public Object {
public:
    /// Notes one write to the card of a checked-out file ("@"); `flags` is 1.
    virtual Status SetVariable(
        std::int32_t fileId, std::int32_t variableId, const Value& value, std::int32_t window, std::int32_t flags)
        = 0;
    /// Performs the writes but those to files that the caller hasn't checked out; a write that no file could take keeps
    /// all from being done and is returned. `errors` gets a status for each write that was refused.
    virtual Status Commit(std::vector<Status>& errors, std::int32_t window) = 0;
};

class IArkBatchReference : public Object {
public:
    /// Notes that the file is to refer to the files of the pairs.
    virtual Status AddReferences(std::int32_t fileId, const std::vector<ArkFileFolderPair>& pairs) = 0;
    virtual Status CreateTree(std::int32_t window, bool& needsCommit) = 0;
    virtual Status Commit(bool& needsCommit) = 0;
};

class IArkBatchUnlock : public Object {
public:
    /// The comment of the versions to come.
    virtual Status SetComment(TextView comment) = 0;
    virtual Status AddSelection(IArkVault& vault, const std::vector<ArkFileFolderPair>& pairs) = 0;
    /// `flag` is 1. `count` gets the number of files that will be checked in.
    virtual Status CreateTree(std::int32_t window, std::int32_t flag, std::int32_t reserved, std::int32_t& count) = 0;
    /// Checks them in. One that can't be checked in doesn't hinder the others; its failure is returned then, with a
    /// sentence for each such file as the vault's text for it.
    virtual Status Unlock(std::int32_t window, std::int32_t flags) = 0;
};

class IArkBatchFetch : public Object {
public:
    /// `version` 0 is the latest.
    virtual Status AddSelection(IArkVault& vault, std::int32_t fileId, std::int32_t folderId, std::int32_t version) = 0;
    /// `flag` 1: referenced files come in the version to which the file refers ("as built"); 0: in their latest.
    virtual Status CreateTree(std::int32_t window, std::int32_t flag) = 0;
    /// Brings the files and their references to the local disk. A file that can't be brought, or that refers to such a
    /// one, doesn't hinder the others if the utility has `IArkLeftOut` to tell it; it is a failure when none of the
    /// noted files could be brought.
    virtual Status GetFiles(std::int32_t window, std::int32_t flags) = 0;
};

/// What a batch utility may be, too: one that does what it can and tells which files it has left out.
class IArkLeftOut {
public:
    virtual ~IArkLeftOut() = default;
    /// Of the utility's last piece of work.
    virtual Status GetLeftOut(std::vector<ArkLeftOut>& files) = 0;
};

/// What the batch of references may be, too: one that takes the version of the targets.
class IArkVersionedReferences {
public:
    virtual ~IArkVersionedReferences() = default;
    /// As `AddReferences`, to one version of one file; 0 is the latest.
    virtual Status AddReferenceToVersion(std::int32_t fileId, const ArkFileFolderPair& target, std::int32_t version)
        = 0;
};

class IArkBatchQuery : public Object {
public:
    virtual Status AddFile(const Value& path) = 0;
    /// The empty text asks for the default columns.
    virtual Status CreateList(TextView columns, std::vector<Text>& columnNames) = 0;
    /// One row for each noted file that the vault has.
    virtual Status GetRows(std::vector<ArkQueryRow>& rows) = 0;
};

class IArkBatchList : public Object {
public:
    /// Notes files and folders (with their subfolders).
    virtual Status AddSelection(IArkVault& vault, const ArkSelection& selection) = 0;
    /// The noted files and all that they refer to, directly or not, parents first; below a part or assembly stand its
    /// drawings too. A file has a row for each parent (and each sheet that a drawing is known to have), but is a parent
    /// itself only once for each configuration, so that neither sharing nor a cycle makes the list long. `columns` are
    /// the names of the columns, each on a line of its own. `flag` 1: references in the version to which the file
    /// refers ("as built"); 0: in their latest. Files that the caller may not read, or that are gone, are left out.
    virtual Status GetRows(TextView columns, std::int32_t flag, std::vector<ArkListRow>& rows) = 0;
};

} // namespace zn
