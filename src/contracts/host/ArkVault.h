#pragma once

#include "base/Object.h"
#include "contracts/host/Codes.h"
#include "contracts/host/Records.h"

#include <memory>
#include <vector>

/// The vault host as the add-in sees it. Every operation returns a status and fills references;
/// a negative status is a failure and leaves the references as they were. Window arguments are 0 for none.
namespace zn {

class IArkFile;
class IArkFolder;

/// A place in an enumeration.
class IArkPosition : public Object {
public:
    /// 1 while an item remains under the position; any other status ends the enumeration.
    virtual Status IsNull(bool& isNull) = 0;
};

/// Values of a file's card in its latest version.
class IArkVariableEnumerator : public Object {
public:
    /// `configuration` "@" stands for the file's own values. `found` is false when the file has no such variable or
    /// no value there. A variable that the vault doesn't know is a negative status.
    virtual Status GetVariable(TextView name, TextView configuration, std::int32_t folderId, Value& value, bool& found)
        = 0;
};

/// The values of one variable in one version of a file.
class IArkVariableValue : public Object {
public:
    /// The variable's id.
    virtual Status GetId(std::int32_t& id) = 0;
    /// 0 with a value, 1 when the variable has no value for that configuration. "@" and the empty text stand for the
    /// file's own values.
    virtual Status GetValue(TextView configuration, Value& value) = 0;
};

/// A card variable of the vault.
class IArkVariable : public Object {
public:
    virtual Status GetName(Text& name) = 0;
    virtual Status GetId(std::int32_t& id) = 0;
};

/// All card variables of the vault; the vault object has this interface too.
class IArkVariableMgr {
public:
    virtual ~IArkVariableMgr() = default;
    virtual Status GetFirstVariablePosition(std::shared_ptr<IArkPosition>& position) = 0;
    /// The variable under the position, which moves on.
    virtual Status GetNextVariable(IArkPosition& position, std::shared_ptr<IArkVariable>& variable) = 0;
};

class IArkFile : public Object {
public:
    virtual Status GetId(std::int32_t& id) = 0;
    virtual Status GetCurrentVersion(std::int32_t& version) = 0;
    /// The file's path in the local view when it is seen in that folder.
    virtual Status GetLocalPath(std::int32_t folderId, Text& path) = 0;
    /// 0 in `flag` means that nobody has the file checked out.
    virtual Status IsCheckedOut(std::int16_t& flag) = 0;
    /// Checks the file out to the calling user in that folder. A file that is checked out already is a failure.
    virtual Status CheckOut(std::int32_t folderId, std::int32_t window, std::int32_t flags) = 0;
    virtual Status GetVariableEnumerator(std::int32_t window, std::shared_ptr<IArkVariableEnumerator>& enumerator) = 0;
    /// `version` is an integer value, 0 or less for the latest. `values` gets one `IArkVariableValue` for each
    /// variable that has values in this version; `configurations` the names of its configurations.
    virtual Status GetVersionInfo(const Value& version, std::int32_t folderId, std::vector<ObjectRef>& values,
        std::vector<Text>& configurations, ArkVersionInfo& info)
        = 0;
};

class IArkFolder : public Object {
public:
    virtual Status GetId(std::int32_t& id) = 0;
    /// The folder's path in the local view.
    virtual Status GetLocalPath(Text& path) = 0;
    virtual Status GetFirstFilePosition(std::shared_ptr<IArkPosition>& position) = 0;
    virtual Status GetNextFile(IArkPosition& position, std::shared_ptr<IArkFile>& file) = 0;
    virtual Status GetFirstSubFolderPosition(std::shared_ptr<IArkPosition>& position) = 0;
    virtual Status GetNextSubFolder(IArkPosition& position, std::shared_ptr<IArkFolder>& folder) = 0;
    /// Removes the file from the folder; the file goes when no folder shows it any more.
    virtual Status DeleteFile(std::int32_t window, std::int32_t fileId, std::int32_t flags) = 0;
    /// `permission` 1 is the right to read.
    virtual Status HasReadRight(std::int32_t permission, std::int32_t fileId, bool& allowed) = 0;
};

/// The open vault. It has the interface `IArkVariableMgr` too.
class IArkVault : public Object {
public:
    /// The folder of the local view, in any spelling, perhaps with a trailing backslash.
    virtual Status GetRootFolderPath(Text& path) = 0;
    virtual Status GetName(Text& name) = 0;
    /// 0 if `path` is a file of the vault, with `file` and (unless the pointer is null) `folder` set.
    /// 1 if it isn't. `E_ARK_PERMISSION_DENIED` without the right to read it.
    virtual Status GetFileFromPath(TextView path, std::shared_ptr<IArkFolder>* folder, std::shared_ptr<IArkFile>& file)
        = 0;
    /// 0 when the folder is in the vault, 1 when it isn't.
    virtual Status GetFolderFromPath(TextView path, std::shared_ptr<IArkFolder>& folder) = 0;
    virtual Status CreateUtility(ArkUtility kind, ObjectRef& utility) = 0;
    /// Lets a person pick files of the vault in a window of the host. `filter` is pairs of a label and patterns, all
    /// separated by "|"; `flags` is the host's (10: several files that exist). `paths` are paths of the local view, in
    /// the order of the choice. 1 when the person cancels; `E_ARK_NO_DESKTOP` when there is nowhere to ask.
    virtual Status BrowseForFile(
        std::int32_t window, std::int32_t flags, TextView title, TextView filter, std::vector<Text>& paths)
        = 0;
    /// Likewise one folder of the vault.
    virtual Status BrowseForFolder(std::int32_t window, TextView title, std::shared_ptr<IArkFolder>& folder) = 0;
    /// The name ("E_ARK_PERMISSION_DENIED") and a sentence for a status. 1 if the vault knows nothing of it.
    virtual Status GetErrorText(Status code, Text& name, Text& description) = 0;
};

} // namespace zn
