#include "contracts/documents/DocumentError.h"
#include "zentrel/model/Bounds.h"
#include "zentrel/model/Build.h"

namespace zn::zentrel {

namespace {

/// The gap between neighbours, as a fraction of the longer one's length along X.
constexpr double gapFraction = 0.1;

Component componentOf(const AssembleInput& input, int number)
{
    const auto kind = readContainerInfo(input.model).kind;
    if (kind == DocumentKind::Drawing)
        throw DocumentError(
            ErrorKind::InvalidArgument, "The file " + quoted(input.model) + " is a drawing and can't be a component.");
    if (input.embed && kind != DocumentKind::Part)
        throw DocumentError(ErrorKind::InvalidArgument,
            "The file " + quoted(input.model) + " is no part, and only parts can be virtual components.");
    Component component;
    component.name = zn::toText(input.model.stem().string()) + u"-" + zn::numberText(number);
    if (input.embed)
        component.embedded = std::make_shared<VirtualDocument>(VirtualDocument{readPart(input.model)});
    else
        component.path = std::filesystem::absolute(input.model).lexically_normal();
    return component;
}

} // namespace

void assemble(const std::filesystem::path& output, const std::vector<AssembleInput>& components)
{
    if (components.empty())
        throw DocumentError(
            ErrorKind::InvalidArgument, "The assembly " + quoted(output) + " needs at least one component.");
    AssemblyDocument assembly;
    AssemblyConfiguration& configuration = assembly.configurations.emplace_back();
    configuration.name = u"Default";
    ModelLoader loader;
    std::map<Text, int> numbers;
    double nextX = 0.0;
    for (const AssembleInput& input : components) {
        int& number = numbers[zn::foldCase(zn::toText(input.model.stem().string()))];
        Component component = componentOf(input, ++number);
        const Bnd_Box box = boundsOf(*loader.load(input.model));
        if (!box.IsVoid() && !box.IsOpen()) {
            const double length = box.CornerMax().X() - box.CornerMin().X();
            if (!assembly.components.empty())
                nextX += gapFraction * length;
            component.placement.SetTranslation(gp_Vec(nextX - box.CornerMin().X(), 0.0, 0.0));
            nextX += (1.0 + gapFraction) * length;
        }
        assembly.components.push_back(std::move(component));
    }
    configuration.states.resize(assembly.components.size());
    writeDocument(assembly, output);
}

} // namespace zn::zentrel
