#pragma once

#include "base/Object.h"
#include "base/Text.h"
#include "base/Value.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Records that cross between the vault host and the add-in. Arrays of them are plain vectors.
namespace zn {

enum class ArkItemType : std::int32_t { File = 1, Folder = 2 };

/// One selected file or folder, as the host hands it over with a command.
struct ArkSelItem {
    std::int32_t fileId = 0;
    std::int32_t folderId = 0;
    Text path;                                ///< full local path of the file or folder
    Text configuration;                       ///< configuration or sheet name, or empty
    ArkItemType itemType = ArkItemType::File; ///< other values are passed over by the add-in
    std::int32_t version = 0;                 ///< -1 or 0 stand for the latest
};
using ArkSelection = std::vector<ArkSelItem>;

struct ArkFileFolderPair {
    std::int32_t fileId = 0;
    std::int32_t folderId = 0;
    bool operator==(const ArkFileFolderPair&) const = default;
};

/// The batch add's result for one file.
struct ArkAddResult {
    std::int32_t fileId = 0;   ///< 0 or less if the host doesn't give it
    std::int32_t folderId = 0; ///< likewise
    Status status = 0;
    Text path; ///< in the vault's local view
};

/// A file that a batch has left out while it did the rest.
struct ArkLeftOut {
    std::int32_t fileId = 0;
    std::int32_t folderId = 0;
    Status status = 0;
    Text sentence; ///< for a person: names the file, the cause and, where somebody has it, who
};

/// One row of the batch query.
struct ArkQueryRow {
    std::int32_t fileId = 0;
    std::int32_t latestVersion = 0;
};

/// What the host tells of one version of a file.
struct ArkVersionInfo {
    std::int32_t latestVersion = 0; ///< of the file, not of the version asked for
    Text revision;
    Text workflowState;
};

/// A document that a run touched, for the host's report.
struct ArkTaskResultDoc {
    std::int32_t fileId = 0;
    std::int32_t kind = 1; ///< always 1
    std::int32_t folderId = 0;
    std::int32_t version = 0;
    bool operator==(const ArkTaskResultDoc&) const = default;
};

/// What became of one output of a run. The numbers are stored.
enum class FileOutcome : std::int32_t {
    Made = 1,      ///< it is new, or the work on the file gives no output
    Replaced = 2,  ///< there was one of that name before
    Unchanged = 3, ///< there was nothing to do, as the one that is there is of this version and these settings
    Skipped = 4,   ///< the run ended, or was ended, before this file
    Failed = 5,
};

/// One output of a run; or one of its files, with an empty output, that has given none.
struct ArkFileResult {
    Text source; ///< local path of the file that was worked on
    std::int32_t sourceId = 0;
    std::int32_t sourceVersion = 0;
    Text part;                 ///< configuration or sheet that the output shows; may be empty
    Text output;               ///< its path, or the printer of a printout
    std::int32_t outputId = 0; ///< 0 outside the vault
    FileOutcome outcome = FileOutcome::Made;
    Text sentence;        ///< why it failed or was skipped
    double seconds = 0.0; ///< that the work on the source took, for all its outputs
};

/// What the host passes with each command. The add-in writes only the fields that say so.
struct ArkCmd {
    std::int32_t command = 0;
    std::int32_t parentWindow = 0; ///< in and out: a flow that supplies a page writes the page's handle
    ObjectRef vault;               ///< the open vault
    Text text; ///< in and out: a button's name; the title of a page; the sentence of a failure or a refused launch
    ObjectRef taskObject;    ///< in and out: `IArkTaskProperties` on setup commands, else `IArkTaskInstance`
    std::int16_t cancel = 0; ///< out: -1 tells the host to stop
    bool attended = true;    ///< whether a person sees the add-in's windows; if not, its message boxes don't open
    Text unspoken;           ///< out: the sentences of boxes that didn't open and what was taken in a user's stead
};

/// A property page that an add-in hands to the host.
struct ArkTaskPage {
    Text title;
    std::int32_t window = 0; ///< a child of the host's dialog
    ObjectRef callback;      ///< the add-in itself
};

/// One entry of a task in a file's menu. A text that is none leaves the reader's own.
struct ArkMenuCmd {
    std::int32_t identifier = 0; ///< the task's kind
    std::optional<Text> menuText;
    std::int32_t flags = 0x4001;
    std::optional<Text> statusText;
    bool operator==(const ArkMenuCmd&) const = default;
};

/// One row of a batch list: a file at one place of the tree of references, with the texts of the columns asked for.
struct ArkListRow {
    std::int32_t fileId = 0;
    std::int32_t folderId = 0;
    std::vector<Text> columns;
};

/// One of the variables that an add-in's tasks may have.
struct ArkTaskVariable {
    Text name;
    ValueType type = ValueType::String; ///< Int32, Boolean, Float32 or String
    bool crLf = false;                  ///< a text whose lines, if it has several, are parted by CR LF
};

struct ArkAddInInfo {
    Text name;
    Text maker;
    Text description;
    std::int32_t addInVersion = 0;
    std::int32_t lowestHostMajorVersion = 0;
};

} // namespace zn
