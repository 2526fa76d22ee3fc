#include "zentrel/application/MacroHost.h"

#include "base/Paths.h"

#include <fmt/format.h>

namespace zn::zentrel {

namespace {

using zn::language::DeclaredCall;

/// Numbers with which the machine's functions answer.
enum SystemError : std::int32_t { Done = 0, PathNotFound = 3, BadPathName = 161, AlreadyExists = 183 };

bool isRelative(TextView path)
{
    const bool rooted = !path.empty() && (path[0] == u'\\' || path[0] == u'/');
    return !rooted && !zn::startsWithDrive(path);
}

/// Makes a folder with its parents. 0 only if this call has made it.
Value createDirectories(zn::FileSystem& files, Confinement& confinement, DeclaredCall& call)
{
    const auto path = call.text(1);
    if (!path || isRelative(*path))
        return BadPathName;
    const Text folder = zn::withoutTrailingSeparators(zn::canonicalPath(*path));
    confinement.require(folder);
    if (files.createFolders(folder))
        return Done;
    return files.attributes(folder) ? AlreadyExists : PathNotFound;
}

Value pathIsRelative(zn::FileSystem&, Confinement&, DeclaredCall& call)
{
    const auto path = call.text(0);
    return path && isRelative(*path) ? 1 : 0;
}

struct DeclaredFunction {
    const char16_t* library; ///< without ".dll"
    const char16_t* entry;
    std::size_t parameters;
    Value (*function)(zn::FileSystem& files, Confinement& confinement, DeclaredCall& call);
};

constexpr DeclaredFunction functions[] = {
    {u"shell32", u"SHCreateDirectoryExW", 3, createDirectories},
    {u"shlwapi", u"PathIsRelativeW", 1, pathIsRelative},
};

Text withoutSuffix(const Text& library)
{
    return zn::equalNoCase(zn::pathExtension(library), u".dll") ? zn::pathStem(library) : library;
}

} // namespace

Value callDeclaredFunction(zn::FileSystem& files, Confinement& confinement, DeclaredCall& call)
{
    for (const DeclaredFunction& function : functions) {
        if (!zn::equalNoCase(withoutSuffix(call.library), function.library) || call.entry != function.entry)
            continue;
        if (call.arguments.size() != function.parameters)
            throw StatusError(zn::DISP_E_BADPARAMCOUNT,
                fmt::format("'{}' takes {} arguments.", zn::toUtf8(call.entry), function.parameters));
        return function.function(files, confinement, call);
    }
    throw StatusError(zn::DISP_E_MEMBERNOTFOUND,
        fmt::format("The function '{}' of the library '{}' is not provided.", zn::toUtf8(call.entry),
            zn::toUtf8(call.library)));
}

} // namespace zn::zentrel
