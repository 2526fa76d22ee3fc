#include "zentrel/model/Manifest.h"

#include <cmath>
#include <set>
#include <stdexcept>

namespace zn::zentrel::manifest {

namespace {

/// At least one element, an active one among them, and a name of its own for each.
template <class Named> void checkNamed(const std::vector<Named>& elements, std::size_t active, const std::string& what)
{
    if (elements.empty())
        throw std::invalid_argument("it has no " + what);
    if (active >= elements.size())
        throw std::invalid_argument("its active " + what + " isn't there");
    std::set<Text> names;
    for (const Named& element : elements) {
        if (element.name.empty())
            throw std::invalid_argument("one " + what + " has no name");
        if (!names.insert(zn::foldCase(element.name)).second)
            throw std::invalid_argument("the " + what + " '" + zn::toUtf8(element.name) + "' is there twice");
    }
}

void checkView(const View& view)
{
    if (view.model.empty())
        throw std::invalid_argument("the view '" + zn::toUtf8(view.name) + "' shows no model");
    if (view.direction.IsParallel(view.up, 1e-9))
        throw std::invalid_argument("the view '" + zn::toUtf8(view.name) + "' has no upward direction");
    if (!(view.scale >= 0.0) || !std::isfinite(view.scale) || !std::isfinite(view.x) || !std::isfinite(view.y))
        throw std::invalid_argument("the view '" + zn::toUtf8(view.name) + "' has an impossible place or scale");
}

void checkAssembly(const AssemblyDocument& assembly, std::set<const VirtualDocument*>& known);

/// Each virtual document once, however often it is placed.
void checkVirtual(const VirtualDocument& document, std::set<const VirtualDocument*>& known)
{
    if (!known.insert(&document).second)
        return;
    if (const PartDocument* part = document.part()) {
        check(*part);
        return;
    }
    for (const Component& component : document.assembly()->components)
        if (!component.isVirtual())
            throw std::invalid_argument("the component '" + zn::toUtf8(component.name)
                + "' of an assembly inside this one must have a document of its own");
    checkAssembly(*document.assembly(), known);
}

void checkComponent(const Component& component, std::set<const VirtualDocument*>& known)
{
    if (component.name.empty())
        throw std::invalid_argument("one component has no name");
    if (component.isVirtual() != component.path.empty())
        throw std::invalid_argument(
            "the component '" + zn::toUtf8(component.name) + "' must have either a path or a document of its own");
    if (component.isVirtual())
        checkVirtual(*component.embedded, known);
    if (std::abs(component.placement.ScaleFactor() - 1.0) > 1e-9 || component.placement.IsNegative())
        throw std::invalid_argument("the component '" + zn::toUtf8(component.name) + "' is scaled or mirrored");
}

void checkAssembly(const AssemblyDocument& assembly, std::set<const VirtualDocument*>& known)
{
    checkNamed(assembly.configurations, assembly.active, "configuration");
    for (const Component& component : assembly.components)
        checkComponent(component, known);
    for (const AssemblyConfiguration& configuration : assembly.configurations) {
        if (configuration.states.size() != assembly.components.size())
            throw std::invalid_argument(
                "the configuration '" + zn::toUtf8(configuration.name) + "' doesn't tell of each component");
    }
}

} // namespace

void check(const PartDocument& part)
{
    checkNamed(part.configurations, part.active, "configuration");
    for (const PartConfiguration& configuration : part.configurations) {
        for (const Body& body : configuration.bodies) {
            if (body.shape.isNull())
                throw std::invalid_argument("a body of '" + zn::toUtf8(configuration.name) + "' has no geometry");
        }
    }
}

void check(const AssemblyDocument& assembly)
{
    std::set<const VirtualDocument*> known;
    checkAssembly(assembly, known);
}

void check(const DrawingDocument& drawing)
{
    checkNamed(drawing.sheets, drawing.active, "sheet");
    for (const Sheet& sheet : drawing.sheets) {
        if (!(sheet.scale > 0.0) || !std::isfinite(sheet.scale))
            throw std::invalid_argument("the sheet '" + zn::toUtf8(sheet.name) + "' has an impossible scale");
        for (const View& view : sheet.views)
            checkView(view);
    }
}

std::string storedPath(const std::filesystem::path& path, const std::filesystem::path& folder)
{
    const std::filesystem::path whole = std::filesystem::absolute(path).lexically_normal();
    // The first component is the root itself; a common second one means a common folder.
    const auto second = [](const std::filesystem::path& p) {
        auto part = p.begin();
        return part == p.end() || ++part == p.end() ? std::filesystem::path() : *part;
    };
    return second(whole) == second(folder) ? whole.lexically_relative(folder).string() : whole.string();
}

std::filesystem::path resolvedPath(const std::string& stored, const std::filesystem::path& folder)
{
    std::filesystem::path whole = (folder / stored).lexically_normal();
    std::error_code ignored;
    if (std::filesystem::exists(whole, ignored))
        return whole;
    std::filesystem::path beside = folder / whole.filename();
    return std::filesystem::exists(beside, ignored) ? beside : whole;
}

} // namespace zn::zentrel::manifest
