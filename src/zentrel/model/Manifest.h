#pragma once

#include "zentrel/model/Container.h"
#include "zentrel/model/ShapeStreams.h"

#include <nlohmann/json_fwd.hpp>

/// Documents as the JSON text of a container's manifest. docs/documents.md tells the members.
namespace zn::zentrel::manifest {

using Json = nlohmann::ordered_json;

/// The member "format" of a kind's manifest ("zentrel-part" …).
const char* formatName(DocumentKind kind);
std::optional<DocumentKind> kindOfFormat(const std::string& format);

/// Whether the assembly's container has the member "documents", which containers of version 1 don't know.
bool sharesDocuments(const AssemblyDocument& assembly);

/// `folder` is the container's folder (absolute), to which references are relative.
Json toJson(const PartDocument& part, ShapeStreams& shapes);
Json toJson(const AssemblyDocument& assembly, ShapeStreams& shapes, const std::filesystem::path& folder);
Json toJson(const DrawingDocument& drawing, const std::filesystem::path& folder);

/// These raise `nlohmann::json::exception` for a member that is missing or of another type, and
/// `std::invalid_argument` with half a sentence for values that break a document's rules.
PartDocument partFrom(const Json& json, ShapeSource& shapes);
AssemblyDocument assemblyFrom(const Json& json, ShapeSource& shapes, const std::filesystem::path& folder);
DrawingDocument drawingFrom(const Json& json, const std::filesystem::path& folder);

/// One body, of which only the name of its stream is told.
Json bodyJson(const Body& body, ShapeStreams& shapes);
Body bodyFrom(const Json& json, ShapeSource& shapes);

/// The rules of a document: `std::invalid_argument` with half a sentence if one is broken.
void check(const PartDocument& part);
void check(const AssemblyDocument& assembly);
void check(const DrawingDocument& drawing);

/// A reference as it is stored: relative to `folder` when both stand below a common folder, else absolute.
std::string storedPath(const std::filesystem::path& path, const std::filesystem::path& folder);
/// The way back. A relative reference that leads nowhere falls back to a file of that name beside the container,
/// if one is there: documents that were copied into one folder still find each other.
std::filesystem::path resolvedPath(const std::string& stored, const std::filesystem::path& folder);

} // namespace zn::zentrel::manifest
