// Makes the documents of this folder anew: make_samples FOLDER
//
// They are checked in, so that nobody needs this to use them; it is their source.

#include "contracts/documents/DocumentError.h"
#include "zentrel/model/Build.h"
#include "zentrel/model/Container.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <iostream>
#include <ShapeUpgrade_UnifySameDomain.hxx>

namespace fs = std::filesystem;
using namespace zn::zentrel;
using zn::DocumentError;
using zn::ErrorKind;

namespace {

/// An angle bracket: two plates of `size` x `size` and a tenth of it thick, with a hole through each.
TopoDS_Shape bracket(double size)
{
    const double thickness = size / 10;
    const double radius = size / 8;
    const TopoDS_Shape foot = BRepPrimAPI_MakeBox(size, size, thickness).Shape();
    const TopoDS_Shape wall = BRepPrimAPI_MakeBox(thickness, size, size).Shape();
    ShapeUpgrade_UnifySameDomain both(BRepAlgoAPI_Fuse(foot, wall).Shape());
    both.Build();
    const gp_Ax2 down(gp_Pnt(0.6 * size, size / 2, -1), gp_Dir(0, 0, 1));
    const gp_Ax2 across(gp_Pnt(-1, size / 2, 0.6 * size), gp_Dir(1, 0, 0));
    const TopoDS_Shape first = BRepPrimAPI_MakeCylinder(down, radius, thickness + 2).Shape();
    const TopoDS_Shape second = BRepPrimAPI_MakeCylinder(across, radius, thickness + 2).Shape();
    return BRepAlgoAPI_Cut(BRepAlgoAPI_Cut(both.Shape(), first).Shape(), second).Shape();
}

PartDocument bracketPart()
{
    PartDocument part;
    part.properties = {{u"Description", u"Angle bracket"}, {u"Material", u"Steel"}};
    struct Size {
        const char16_t* name;
        double length;
        const char16_t* number;
    };
    for (const Size& size :
        {Size{u"Small", 40, u"B-040"}, Size{u"Medium", 80, u"B-080"}, Size{u"Large", 160, u"B-160"}})
        part.configurations.push_back(
            {size.name, {{u"Bracket", bracket(size.length), Color{0.2, 0.4, 0.8}, {}}}, {{u"Number", size.number}}});
    return part;
}

PartDocument pinPart()
{
    PartDocument part;
    part.properties = {{u"Description", u"Pin"}};
    part.configurations.push_back(
        {u"Default", {{u"Pin", BRepPrimAPI_MakeCylinder(9.5, 60).Shape(), Color{0.8, 0.5, 0.1}, {}}}, {}});
    return part;
}

/// Two medium brackets back to back, and a pin of the assembly's own through both walls.
AssemblyDocument standAssembly(const fs::path& bracketFile)
{
    AssemblyDocument assembly;
    assembly.properties = {{u"Description", u"Stand"}, {u"Number", u"S-001"}};
    gp_Trsf turned;
    turned.SetRotation(gp_Ax1(gp_Pnt(0, 40, 0), gp_Dir(0, 0, 1)), M_PI);
    gp_Trsf through;
    through.SetDisplacement(gp_Ax3(), gp_Ax3(gp_Pnt(-30, 40, 48), gp_Dir(1, 0, 0)));
    assembly.components = {{u"Bracket-1", bracketFile, {}, {}}, {u"Bracket-2", bracketFile, {}, turned},
        {u"Pin^Stand-1", {}, std::make_shared<PartDocument>(pinPart()), through}};
    assembly.configurations = {{u"Default", {{false, false, u"Medium"}, {false, false, u"Medium"}, {}}, {}}};
    return assembly;
}

/// What others try the program on must be without a fault.
void requireSound(const PartDocument& part)
{
    for (const PartConfiguration& configuration : part.configurations) {
        for (const Body& body : configuration.bodies) {
            if (!BRepCheck_Analyzer(body.shape).IsValid())
                throw DocumentError(ErrorKind::Kernel, "The body '" + zn::toUtf8(body.name) + "' isn't sound.");
        }
    }
}

void makeSamples(const fs::path& folder)
{
    requireSound(bracketPart());
    requireSound(pinPart());
    writeDocument(bracketPart(), folder / "Bracket.zenprt");
    writeDocument(standAssembly(folder / "Bracket.zenprt"), folder / "Stand.zenasm");
    draw(folder / "Чертёж.zendrw",
        {{u"Stand", PaperSize::A3, true, folder / "Stand.zenasm", {}},
            {u"Bracket", PaperSize::A4, false, folder / "Bracket.zenprt", u"Large"}});
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::cerr << "usage: make_samples FOLDER\n";
        return 2;
    }
    try {
        makeSamples(arguments[1]);
    } catch (const DocumentError& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
