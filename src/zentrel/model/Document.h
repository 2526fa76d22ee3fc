#pragma once

#include "base/Text.h"
#include "zentrel/model/Geometry.h"

#include <array>
#include <filesystem>
#include <gp_Dir.hxx>
#include <gp_Trsf.hxx>
#include <map>
#include <memory>
#include <optional>
#include <TopoDS_Shape.hxx>
#include <utility>
#include <variant>
#include <vector>

/// The documents of the CAD application as plain records: whoever has one may change it freely.
/// Lengths are millimetres. Names are `Text`; names of configurations and sheets are unique within their document.
/// Paths are paths of this machine.
namespace zn::zentrel {

using zn::Text;

enum class DocumentKind { Part = 1, Assembly = 2, Drawing = 3 };

/// Custom properties: name to value. The document's own, and one map a configuration.
using Properties = std::map<Text, Text>;

/// Red, green and blue from 0 to 1.
struct Color {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    bool operator==(const Color&) const = default;
};

/// One body of a part: a solid, a set of surfaces, curves, or faces that have only a tessellation.
struct Body {
    Text name;      ///< may be empty
    Geometry shape; ///< never null
    std::optional<Color> color;
    /// Colours of single faces, which win over `color`. The number counts the body's distinct faces from 1,
    /// in the order of the kernel's `TopExp::MapShapes`.
    std::map<int, Color> faceColors;
    std::vector<Text> layers = {}; ///< on which it lies, as a foreign file names them
};

struct PartConfiguration {
    Text name;
    std::vector<Body> bodies;
    Properties properties;
    /// Of bodies without a colour of their own, unless the component that places the part has one.
    std::optional<Color> color = {};
};

struct PartDocument {
    std::vector<PartConfiguration> configurations; ///< at least one
    std::size_t active = 0;                        ///< index of the last active configuration
    Properties properties;
    Text name = {}; ///< how the foreign file that it comes from calls it; empty: as its own file
};

/// How a component stands in one configuration of its assembly.
struct ComponentState {
    bool suppressed = false; ///< not there at all
    bool hidden = false;     ///< there, but not shown; left out of exports
    Text configuration;      ///< of the component's document; empty: its active one
};

struct VirtualDocument;

/// A part or an assembly placed in an assembly.
struct Component {
    Text name; ///< as the tree shows it, such as "Bracket-1"; those of a foreign file need not differ
    /// The component's document; empty for a virtual component.
    std::filesystem::path path;
    /// The document of a virtual component, which lives inside the assembly only; null otherwise. Equal components
    /// share it.
    std::shared_ptr<const VirtualDocument> embedded;
    gp_Trsf placement; ///< from the component's space to the assembly's
    /// Of all bodies below that have no colour nearer to them.
    std::optional<Color> color = {};

    bool isVirtual() const { return embedded != nullptr; }
};

struct AssemblyConfiguration {
    Text name;
    std::vector<ComponentState> states; ///< one for each component, in the order of the components
    Properties properties;
};

struct AssemblyDocument {
    std::vector<Component> components;
    std::vector<AssemblyConfiguration> configurations; ///< at least one
    std::size_t active = 0;                            ///< index of the last active configuration
    Properties properties;
    Text name = {}; ///< how the foreign file that it comes from calls it; empty: as its own file
};

/// The document of a virtual component. The components of a virtual assembly are virtual themselves.
struct VirtualDocument {
    std::variant<PartDocument, AssemblyDocument> content;

    const PartDocument* part() const { return std::get_if<PartDocument>(&content); }
    const AssemblyDocument* assembly() const { return std::get_if<AssemblyDocument>(&content); }
};

enum class PaperSize { A, B, C, D, E, A0, A1, A2, A3, A4 };

/// Paper name, such as "A3".
const char* paperName(PaperSize size);
/// The paper of a name, without regard to case.
std::optional<PaperSize> paperFromName(zn::TextView name);

/// One projection of a part or an assembly on a sheet.
struct View {
    Text name;
    std::filesystem::path model;              ///< a part or an assembly
    Text configuration;                       ///< of the model; empty: its active one
    gp_Dir direction = gp_Dir(0.0, 0.0, 1.0); ///< from the model to the eye
    gp_Dir up = gp_Dir(0.0, 1.0, 0.0);        ///< what is up on the paper; not parallel to `direction`
    double x = 0.0; ///< where the middle of the projection stands, from the sheet's lower left corner, in mm
    double y = 0.0;
    double scale = 0.0;      ///< paper length by model length; 0: the sheet's
    bool hiddenLines = true; ///< show hidden edges dashed
};

struct Sheet {
    Text name;
    PaperSize paper = PaperSize::A4;
    bool landscape = false;
    double scale = 1.0; ///< paper length by model length
    std::vector<View> views;

    /// Width and height in mm, as the sheet lies.
    std::pair<double, double> size() const;
};

struct DrawingDocument {
    std::vector<Sheet> sheets; ///< at least one
    std::size_t active = 0;    ///< index of the last active sheet
    Properties properties;
};

/// Index of the configuration with that name (an exact one first, then without regard to case).
/// The empty name gives the active one. Raises `InvalidArgument` with `document` in its sentence.
std::size_t configurationIndex(const PartDocument& part, const Text& name, const std::filesystem::path& document);
std::size_t configurationIndex(
    const AssemblyDocument& assembly, const Text& name, const std::filesystem::path& document);
/// Likewise for a sheet.
std::size_t sheetIndex(const DrawingDocument& drawing, const Text& name, const std::filesystem::path& document);

} // namespace zn::zentrel
