#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zn {

/// The external CAD files of a STEP file (ISO 10303-21, entities `APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT` and
/// `DOCUMENT_FILE`), each once; paths as they stand there, with "/". Raises `DocumentError` if the
/// file can't be read. A file that is no STEP file has none.
std::vector<std::string> stepReferences(const std::filesystem::path& file);

} // namespace zn
