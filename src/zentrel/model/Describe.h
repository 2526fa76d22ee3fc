#pragma once

#include "zentrel/model/Container.h"

namespace zn::zentrel {

/// A part or body, and how often it stands in an assembly with all its levels.
struct PartCount {
    Text name;
    std::size_t count = 0;
};

/// What `describe` tells of one configuration.
struct ConfigurationInfo {
    Text name;
    std::size_t bodies = 0;           ///< with those of components
    std::size_t faces = 0;            ///< likewise
    std::array<double, 3> size{};     ///< of the bounding box, in mm; zeros without geometry
    double volume = 0.0;              ///< of the solids, in mm^3
    double area = 0.0;                ///< of all faces, in mm^2
    std::vector<PartCount> bodyNames; ///< each name once, in the order in which they are met
    std::vector<PartCount> parts;     ///< the bill of materials of an assembly, in the tree's order
    Properties properties;
};

struct ComponentInfo {
    Text name;
    std::filesystem::path path; ///< empty for a virtual component
    bool isVirtual = false;
    bool isMissing = false; ///< its file isn't there; configurations then tell nothing of it
};

struct SheetInfo {
    Text name;
    PaperSize paper = PaperSize::A4;
    bool landscape = false;
    double scale = 1.0;
    std::vector<std::filesystem::path> models; ///< of the views, each once
};

struct DocumentInfo {
    DocumentKind kind = DocumentKind::Part;
    int version = 0; ///< of the container; 0 for a foreign file
    Text active;     ///< configuration or sheet
    Properties properties;
    std::vector<ConfigurationInfo> configurations; ///< of parts and assemblies
    std::vector<ComponentInfo> components;         ///< of assemblies
    std::vector<SheetInfo> sheets;                 ///< of drawings
};

/// Reads a .zenprt, .zenasm or .zendrw and tells what is in it. Raises what `readDocument` raises.
DocumentInfo describe(const std::filesystem::path& file);
/// The same for a document that is in memory; `file` is its path.
DocumentInfo describe(const Document& document, const std::filesystem::path& file);

} // namespace zn::zentrel
