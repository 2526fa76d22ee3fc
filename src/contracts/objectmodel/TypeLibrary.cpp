#include "contracts/objectmodel/TypeLibrary.h"

#include "contracts/objectmodel/Enumerations.h"
#include "language/Library.h"

#include <algorithm>

namespace zn::zentrel {

namespace {

using zn::language::LibraryType;

constexpr const char16_t* classes[] = {
    u"Application",
    u"AssemblyDoc",
    u"Component2",
    u"Configuration",
    u"ConfigurationManager",
    u"DocumentSpecification",
    u"DrawingDoc",
    u"ExportPdfData",
    u"Frame",
    u"MBD3DPdfData",
    u"ModelDoc2",
    u"ModelDocExtension",
    u"ModelView",
    u"PageSetup",
    u"PartDoc",
    u"Sheet",
    u"View",
    u"ZnApplication",
};

/// The name without the library's own name before it.
zn::TextView ownName(zn::TextView name)
{
    constexpr zn::TextView prefixes[] = {u"Zentrel.", u"ZnConst."};
    for (const zn::TextView prefix : prefixes)
        if (zn::startsWithNoCase(name, prefix))
            return name.substr(prefix.size());
    return name;
}

class TypeLibrary : public zn::language::Library {
public:
    std::optional<zn::Value> constant(zn::TextView name) const override
    {
        const auto value = enumerationValue(ownName(name));
        return value ? std::optional<zn::Value>(*value) : std::nullopt;
    }

    LibraryType typeNamed(zn::TextView name) const override
    {
        const zn::TextView own = ownName(name);
        if (isEnumeration(own))
            return LibraryType::Enumeration;
        const bool isClass = std::any_of(
            std::begin(classes), std::end(classes), [&](const char16_t* one) { return zn::equalNoCase(own, one); });
        return isClass ? LibraryType::Class : LibraryType::Unknown;
    }

    bool hasGlobal(zn::TextView name) const override { return zn::equalNoCase(ownName(name), u"Application"); }
};

} // namespace

zn::language::CompileOptions macroCompileOptions()
{
    static const TypeLibrary library;
    return {.library = &library,
        .conditionalConstants = {{u"VBA7", true}, {u"VBA6", true}, {u"Win64", true}, {u"Win32", true}}};
}

} // namespace zn::zentrel
