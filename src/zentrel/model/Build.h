#pragma once

#include "zentrel/model/Document.h"

/// Making documents from documents: what the command line offers. (Parts are made from foreign files by
/// `importPart` in zentrel/formats/BuildPart.h.) Every function raises `DocumentError`.
namespace zn::zentrel {

/// One component of an assembly to be made.
struct AssembleInput {
    std::filesystem::path model; ///< a .zenprt or a .zenasm
    bool embed = false;          ///< store a part inside the assembly as a virtual component; parts only
};

/// Writes an assembly with one configuration "Default". The components stand side by side along X with a gap, each
/// named after its file with a running number ("Bracket-1", "Bracket-2").
void assemble(const std::filesystem::path& output, const std::vector<AssembleInput>& components);

/// One sheet of a drawing to be made.
struct DrawInput {
    Text name; ///< unique in the drawing
    PaperSize paper = PaperSize::A4;
    bool landscape = false;
    std::filesystem::path model; ///< a .zenprt or a .zenasm
    Text configuration;          ///< of the model; empty: its active one
};

/// Writes a drawing: on every sheet the front, top and right view of its model and an isometric one, at the largest
/// standard scale that fits.
void draw(const std::filesystem::path& output, const std::vector<DrawInput>& sheets);

} // namespace zn::zentrel
