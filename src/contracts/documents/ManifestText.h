#pragma once

#include "contracts/documents/ArchiveReader.h"

#include <nlohmann/json_fwd.hpp>

namespace zn {

/// The manifest of a document. Raises `DocumentError` Damaged if it is missing, isn't JSON, or is larger, deeper or has
/// more values than any document's: it stands packed in the archive, where a thousand bytes take one.
nlohmann::json readManifest(ArchiveReader& archive);

} // namespace zn
