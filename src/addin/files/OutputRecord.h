#pragma once

#include "base/Text.h"
#include "contracts/host/Codes.h"
#include "platform/FileSystem.h"

#include <memory>
#include <optional>
#include <vector>

namespace zn {

/// One file of a run, from the host's selection to the results in the vault.
struct OutputRecord {
    Text path;          ///< input: the local vault path; output: the path that the CAD application saved to
    Text revision;      ///< of an input file, filled by the card transfer
    Text workflowState; ///< likewise
    Text configuration; ///< output: the configuration or sheet that was active at the save or print
    Text extra;         ///< on a print record the printer's name; otherwise what a stored list held
    std::int32_t docId = 0;
    std::int32_t projId = 0;
    std::int32_t version = 0;             ///< -1 or 0 stand for the latest
    std::int32_t latestVersion = -1;      ///< -1 until it is known
    Text selConfiguration;                ///< input: the configuration or sheet that the selection names
    Text leftOut;                         ///< input: why the vault could not bring it; such a file isn't worked on
    bool complained = false;              ///< input: its macro has written to the log
    bool worked = false;                  ///< input: its macro has ended normally
    double seconds = 0.0;                 ///< input: what the work on it took
    bool replaces = false;                ///< output: the vault had one of that name before the save
    bool delivered = false;               ///< output: in the vault, checked in
    std::optional<FileAttributes> before; ///< output of which the vault has a version: the local file before the save
    std::int64_t notedAt = 0;             ///< output: when its save was announced, Unix time in seconds
    bool added = false;                   ///< in the vault under `docId`, to be checked in at the end
    bool hidden = false;                  ///< the system's own file (the log), left out of both lists
    bool isCadFile = false;
    bool printEntry = false;        ///< stands for a printout, not for a file
    bool insideVault = false;       ///< `path` begins with the vault's root path
    OutputRecord* source = nullptr; ///< output or print: the input record that produced it; not owned
};

/// Input records. They stay where they are while a run refers to them as sources.
using SelectionRecords = std::vector<std::unique_ptr<OutputRecord>>;

/// `version` unless that is 0 or -1, then `latestVersion`.
std::int32_t effectiveVersion(const OutputRecord& record);

/// Whether the text behind the last "." is zenprt, zenasm or zendrw, without regard to case.
bool isCadFile(TextView path);

/// The bit of a file's kind for a launch: `assembliesSelected`, `partsSelected` or `othersSelected`.
std::int32_t selectedKind(const OutputRecord& record);

/// Whether the text behind the last "." is one of those that can be converted and printed, without regard to case.
bool hasConvertibleExtension(TextView path);

/// Whether a folder's file takes part in a task of that kind. Kinds other than conversion and printing take all.
bool isConvertibleFile(const OutputRecord& record, TaskKind kind);

} // namespace zn
