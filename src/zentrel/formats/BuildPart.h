#pragma once

#include "zentrel/kernel/Remarks.h"
#include "zentrel/model/Document.h"

namespace zn::zentrel {

/// One foreign file that becomes a configuration of a part.
struct ImportInput {
    std::filesystem::path file; ///< .step, .stp, .igs or .iges
    Text configuration;         ///< empty: "Default"
};

/// Writes a part with one configuration for each input, in their order; the first is the active one.
/// Returned is what a person should know of parts that came otherwise than their files have them.
/// Raises `DocumentError`: what the reader raises, or `InvalidArgument` for two configurations of one name.
Remarks importPart(const std::vector<ImportInput>& inputs, const std::filesystem::path& output);

/// Writes an assembly with the levels, names and colours of a foreign file; its parts are virtual components.
/// Raises what the reader raises, or `InvalidArgument` for a file that holds a part only.
Remarks importAssembly(const std::filesystem::path& input, const std::filesystem::path& output);

} // namespace zn::zentrel
