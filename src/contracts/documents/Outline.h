#pragma once

#include "base/Text.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zn {

/// What a CAD file says of itself that a vault keeps with its versions, read without its geometry.
struct DocumentOutline {
    /// Names of a drawing's sheets or of a part's or assembly's configurations, in the document's order. None of
    /// foreign files.
    std::vector<Text> parts;
    /// Files to which it refers, each once: paths with "/", relative to the folder in which the document was saved, or
    /// absolute. A file that isn't there may lie beside the document under the same name.
    std::vector<std::string> references;
};

/// Whether files of this name have an outline: .zenprt, .zenasm, .zendrw, the short forms .prt, .asm and .drw, and
/// STEP.
bool hasOutline(TextView fileName);

/// Reads the outline of a file, which may lie under another name than the one by which people know it: `shown` tells
/// its kind and stands in sentences. Raises `DocumentError`.
DocumentOutline readOutline(const std::filesystem::path& file, const std::filesystem::path& shown);

} // namespace zn
