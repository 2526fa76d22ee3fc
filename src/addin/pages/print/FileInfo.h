#pragma once

#include "base/Text.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace zn {

/// One file of the print dialog, in one configuration. It stands once however many places it has in the tree, so that
/// a tick at one place is a tick at all.
struct FileInfo {
    /// Values of `state`.
    static constexpr std::int32_t printable = 0;
    static constexpr std::int32_t notPrintable = 2;
    /// Bit of `returnFlags`.
    static constexpr std::int32_t drawingFlag = 1;

    std::int32_t documentId = 0;
    std::int32_t folderId = 0;
    Text name;
    Text path; ///< of the folder, without a trailing separator
    Text configuration;
    std::int32_t version = 0; ///< 0 for the latest
    bool selected = false;    ///< ticked for printing
    std::int32_t state = printable;
    Text stateText;
    std::int32_t returnFlags = 0;

    // What the file refers to, and the drawings that show it. They belong to the list of files.
    std::vector<FileInfo*> drawings;
    std::vector<FileInfo*> parts;

    bool isDrawing() const { return (returnFlags & drawingFlag) != 0; }
};

using RefPtr = std::shared_ptr<FileInfo>;
using Lst = std::vector<RefPtr>;

} // namespace zn
