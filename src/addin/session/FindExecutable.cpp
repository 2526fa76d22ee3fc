#include "addin/session/FindExecutable.h"

#include "base/Format.h"
#include "platform/Registry.h"

namespace zn {

namespace {

constexpr auto machine = RegistryRoot::Machine;
constexpr RegistryView views[] = {RegistryView::Bits64, RegistryView::Bits32};
/// A release's year is its program identifier's number and this.
constexpr std::int32_t firstYear = 1992;

Text setupKey(std::int32_t year) { return formatText("SOFTWARE\\Zentrel\\Zentrel %d\\Setup", year); }

std::optional<Text> readText(
    Registry& registry, const Text& key, TextView name, RegistryView view = RegistryView::Bits64)
{
    const auto value = registry.read(machine, key, name, view);
    return value ? value->asText() : std::nullopt;
}

Text installationFolder(Registry& registry, std::int32_t year)
{
    for (const RegistryView view : views) {
        auto folder = readText(registry, setupKey(year), u"Zentrel Folder", view);
        if (!folder)
            folder = readText(registry, setupKey(year), u"Zentrel Location", view);
        if (folder && !folder->empty())
            return *folder;
    }
    return {};
}

Text classValue(Registry& registry, TextView classId, TextView key)
{
    for (const RegistryView view : views)
        if (const auto text
            = readText(registry, Text(u"SOFTWARE\\Classes\\CLSID\\").append(classId).append(key), u"", view))
            return *text;
    return {};
}

/// The year by a program identifier's number: "Zentrel.Application.26" gives 2018, a word behind the dot 1992.
std::optional<std::int32_t> yearOf(const Text& progId)
{
    const std::size_t dot = progId.rfind(u'.');
    if (dot == Text::npos || dot == 0)
        return std::nullopt;
    return leadingInteger(TextView(progId).substr(dot + 1)) + firstYear;
}

bool isRegressionForced(Registry& registry)
{
    registry.createKey(RegistryRoot::User, addInKey);
    const auto value = registry.read(RegistryRoot::User, addInKey, u"ForceRegressionMode");
    return value && value->asNumber().value_or(0) != 0;
}

std::int32_t officeInstalled(Registry& registry, std::int32_t year)
{
    for (const RegistryView view : views) {
        const auto value = registry.read(machine, setupKey(year), u"Zentrel Office Installed", view);
        if (value && value->type == RegistryType::Number && value->asNumber())
            return *value->asNumber();
    }
    return -1;
}

bool isOlderThan213(const std::optional<FileVersion>& version)
{
    return !version || version->major < 21 || (version->major == 21 && version->minor < 3);
}

} // namespace

Text releaseProgId(std::int32_t year) { return formatText("%s.%d", Text(plainProgId), year - firstYear); }

Text resolveProgId(const Platform& platform, TextView name)
{
    for (const RegistryView view : views) {
        const auto classId
            = readText(platform.registry, Text(u"SOFTWARE\\Classes\\").append(name).append(u"\\CLSID"), u"", view);
        if (classId && !classId->empty())
            return *classId;
    }
    throw StatusError(REGDB_E_CLASSNOTREG, "The program identifier '" + toUtf8(name) + "' is not registered.");
}

ExecutableChoice findExecutable(const Platform& platform, TextView classId, std::int32_t year, bool forceRegression)
{
    Registry& registry = platform.registry;
    ExecutableChoice choice;
    choice.year = year;
    Text path;
    if (year != 0)
        path = installationFolder(registry, year);
    if (!path.empty()) {
        while (path.ends_with(u'\\'))
            path.pop_back();
        path += u"\\ZENTREL.EXE";
    } else {
        path = classValue(registry, classId, u"\\LocalServer32");
        choice.year = yearOf(classValue(registry, classId, u"\\ProgID")).value_or(year);
    }
    if (path.empty())
        return choice;
    choice.version = platform.processes.fileVersion(path);
    choice.regressionMode = forceRegression || isRegressionForced(registry)
        || (officeInstalled(registry, choice.year) < 1 && isOlderThan213(choice.version));
    choice.commandLine = path + (choice.regressionMode ? u" /R" : u" /B");
    return choice;
}

} // namespace zn
