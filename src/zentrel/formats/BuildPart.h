#pragma once

#include "zentrel/model/Document.h"

namespace zn::zentrel {

/// One foreign file that becomes a configuration of a part.
struct ImportInput {
    std::filesystem::path file; ///< .step, .stp, .igs or .iges
    Text configuration;         ///< empty: "Default"
};

/// Writes a part with one configuration for each input, in their order; the first is the active one.
/// Raises `DocumentError`: what the reader raises, or `InvalidArgument` for two configurations of one name.
void importPart(const std::vector<ImportInput>& inputs, const std::filesystem::path& output);

/// Writes an assembly with the levels, names and colours of a foreign file; its parts are virtual components.
/// Raises what the reader raises, or `InvalidArgument` for a file that holds a part only.
void importAssembly(const std::filesystem::path& input, const std::filesystem::path& output);

} // namespace zn::zentrel
