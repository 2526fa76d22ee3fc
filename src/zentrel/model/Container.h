#pragma once

#include "zentrel/model/Document.h"

#include <cstdint>
#include <variant>

/// The files of our own documents (.zenprt, .zenasm, .zendrw); docs/documents.md tells their layout.
namespace zn::zentrel {

/// The highest container version of a kind that this program reads. It writes assemblies as version 2 only where they
/// hold assemblies, or one part in several places; everything else is version 1.
int containerVersion(DocumentKind kind);

using Document = std::variant<PartDocument, AssemblyDocument, DrawingDocument>;

/// The kind that a file's extension stands for (.zenprt or .prt, .zenasm or .asm, .zendrw or .drw, without regard
/// to case); nothing for others.
std::optional<DocumentKind> kindFromExtension(const std::filesystem::path& file);

/// Reads a document. The geometry of a part comes whole; referenced documents are not read, their paths come back
/// absolute. Raises `NotFound`, `NotReadable`, `Damaged` (empty, truncated, mislabelled, a part missing, a kind
/// other than the extension's) or `FutureVersion`.
Document readDocument(const std::filesystem::path& file);
/// The same for one kind; another kind in the file is `Damaged`.
PartDocument readPart(const std::filesystem::path& file);
AssemblyDocument readAssembly(const std::filesystem::path& file);
DrawingDocument readDrawing(const std::filesystem::path& file);

/// What the file was written by, without its geometry. Raises as `readDocument` does.
struct ContainerInfo {
    DocumentKind kind = DocumentKind::Part;
    int version = 0;
};
ContainerInfo readContainerInfo(const std::filesystem::path& file);

/// Writes a document: to a temporary name in the target's folder, synced, then renamed over the target. References
/// to other documents are stored relative to the target's folder when both stand below a common one. Raises
/// `NotWritable`, or `InvalidArgument` for a document that breaks its rules; what existed is then untouched.
void writeDocument(const Document& document, const std::filesystem::path& file);

} // namespace zn::zentrel
