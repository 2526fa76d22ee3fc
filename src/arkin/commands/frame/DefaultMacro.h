#pragma once

#include "base/Text.h"
#include "contracts/host/Codes.h"

#include <filesystem>

namespace zn::arkin {

/// The macro text of a file, which is in the single-byte code page. Raises `StatusError` with a sentence.
zn::Text readMacro(const std::filesystem::path& file);

/// The macro that a task of this kind starts with, from the folder "macros" beside this program. Raises `StatusError`
/// with a sentence if the file isn't there.
zn::Text defaultMacro(zn::TaskKind kind);

} // namespace zn::arkin
