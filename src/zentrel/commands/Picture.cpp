#include "zentrel/commands/Command.h"

#include "zentrel/commands/DocumentJson.h"
#include "zentrel/formats/LitTriangles.h"
#include "zentrel/formats/Png.h"
#include "zentrel/formats/Read.h"
#include "zentrel/formats/ShadedPicture.h"
#include "zentrel/model/WholeFile.h"

#include <fmt/format.h>
#include <iostream>
#include <map>

namespace zn::zentrel::commands {

namespace {

struct Look {
    gp_Dir direction;
    gp_Dir up;
};

const std::map<std::string, Look> looks = {
    {"iso", {{1, -1, 1}, {0, 0, 1}}},
    {"front", {{0, -1, 0}, {0, 0, 1}}},
    {"back", {{0, 1, 0}, {0, 0, 1}}},
    {"left", {{-1, 0, 0}, {0, 0, 1}}},
    {"right", {{1, 0, 0}, {0, 0, 1}}},
    {"top", {{0, 0, 1}, {0, 1, 0}}},
    {"bottom", {{0, 0, -1}, {0, -1, 0}}},
};

constexpr double tolerance = 0.05; // of curves, in mm of paper

struct Picture {
    std::filesystem::path file;
    std::filesystem::path output;
    std::string view = "iso";
    std::string part;
    int size = 512;

    void declare(Arguments& take)
    {
        take.option("FILE", file, "A .zenprt, .zenasm or .zendrw, a STEP, IGES or STL file").required();
        take.option("OUT", output,
                "The picture to be written (.png); or a model's triangles with their colours, to be turned (.ply); or "
                "what "
                "'zentrel info --json' tells (.json)")
            .required();
        take.option("--view", view, "Of a model: iso, front, back, left, right, top or bottom (default: iso)");
        take.option("--part", part, "Configuration or sheet (default: the active one)");
        take.option("--size", size, "Pixels of the longer side (default: 512)").range(16, 4096);
    }

    int run() const
    {
        const auto look = looks.find(view);
        if (look == looks.end())
            throw WrongUse("--view: '" + view + "' is none of iso, front, back, left, right, top and bottom");
        Remarks remarks;
        const Document document = read(remarks);
        writeWhole(output, made(document, {look->second.direction, look->second.up, size, size}));
        for (const auto& remark : remarks)
            std::cerr << "zentrel: " << remark << "\n";
        return zn::commandline::done;
    }

private:
    std::string made(const Document& document, const PictureView& seen) const
    {
        const auto* const drawing = std::get_if<DrawingDocument>(&document);
        if (output.extension() == ".json")
            return documentJson(describe(document, file)).text();
        if (output.extension() == ".ply" && drawing)
            throw WrongUse(file.string() + " is a drawing; only models can be turned. Name a .png.");
        if (output.extension() == ".ply")
            return plyOf(*modelOf(document), file);
        return drawing ? pictureOf(*drawing) : shadedPicture(*modelOf(document), seen, file);
    }

    Document read(Remarks& remarks) const { return canRead(file) ? readForeign(file, &remarks) : readDocument(file); }

    ModelRef modelOf(const Document& document) const
    {
        ModelLoader loader;
        const Text configuration = zn::toText(part);
        if (const auto* one = std::get_if<PartDocument>(&document))
            return loader.load(*one, file, configuration);
        return loader.load(std::get<AssemblyDocument>(document), file, configuration);
    }

    std::string pictureOf(const DrawingDocument& drawing) const
    {
        const auto sheets
            = sheetsNamed(drawing, {part.empty() ? drawing.sheets.at(drawing.active).name : zn::toText(part)}, file);
        return pngOf(SheetPainter(file, tolerance).paint(*sheets.front()), size, size);
    }
};

} // namespace

Subcommand pictureCommand() { return subcommand<Picture>("picture", "Draws a document as it looks, as a PNG"); }

} // namespace zn::zentrel::commands
