#pragma once

#include <filesystem>
#include <Resource_FormatType.hxx>

namespace zn::zentrel {

/// The encoding of a STEP file's texts. The standard knows ASCII only, and newer files have UTF-8; older programs wrote
/// their machine's page. A file whose bytes are no UTF-8 is in the page that its texts look like most.
Resource_FormatType stepEncoding(const std::filesystem::path& file);

} // namespace zn::zentrel
