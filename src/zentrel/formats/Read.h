#pragma once

#include "zentrel/kernel/Remarks.h"
#include "zentrel/model/Container.h"

/// Readers of foreign files. They run the kernel in a child process, so that its crash costs the file only.
namespace zn::zentrel {

/// Whether a reader takes the extension (".step", ".stp", ".igs", ".iges", ".stl", without regard to case).
bool canRead(const std::filesystem::path& file);

/// These extensions.
std::vector<Text> readExtensions();

/// Reads a foreign file by its extension with one configuration "Default": a part, or an assembly of virtual components
/// where the file has levels. Instances share their document.
/// Raises `DocumentError`: `NotFound`, `NotReadable`, `Damaged` (empty, truncated, another format's content),
/// `Incomplete` (faces, solids or files that the file lists are missing, or nothing could be read), `Kernel`,
/// `Unsupported` (an extension that no reader takes). What came otherwise than the file has it is added to `remarks`.
Document readForeign(const std::filesystem::path& file, Remarks* remarks = nullptr);

Document readStep(const std::filesystem::path& file, Remarks* remarks = nullptr);
Document readIges(const std::filesystem::path& file, Remarks* remarks = nullptr);
/// The triangles, whose numbers count as mm, as a part of one body that has no surfaces.
Document readStl(const std::filesystem::path& file, Remarks* remarks = nullptr);

/// An assembly with all that it refers to as one part: each placed body is a body at its place. A part stays as it is.
/// `file` is the document's path. Raises what loading the components raises, and `Kernel`.
PartDocument asPart(const Document& document, const std::filesystem::path& file, const Text& configuration = {});

} // namespace zn::zentrel
