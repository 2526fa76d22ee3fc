#include "cad/FindExecutable.h"

#include "base/Format.h"
#include "base/Paths.h"
#include "platform/Processes.h"
#include "platform/Registry.h"

namespace zn {

namespace {

constexpr int firstYear = 1992; // the program identifier's number is the year minus this
constexpr RegistryView views[] = {RegistryView::Bits64, RegistryView::Bits32};
constexpr const char16_t* settingsKey = u"Software\\Zentrel\\Applications\\Arkin Enterprise\\ZNTaskAddIn";

std::optional<Text> machineText(const Platform& platform, const Text& key, const char16_t* name, RegistryView view)
{
    const auto value = platform.registry.read(RegistryRoot::Machine, key, name, view);
    return value ? value->asText() : std::nullopt;
}

Text setupKey(std::int32_t year) { return formatText("SOFTWARE\\Zentrel\\Zentrel %d\\Setup", year); }

Text installedFolder(const Platform& platform, std::int32_t year)
{
    for (const RegistryView view : views) {
        for (const char16_t* name : {u"Zentrel Folder", u"Zentrel Location"}) {
            const Text folder = machineText(platform, setupKey(year), name, view).value_or(Text());
            if (!folder.empty())
                return folder;
        }
    }
    return {};
}

Text classText(const Platform& platform, const Text& classId, const char16_t* subKey)
{
    const Text key = u"SOFTWARE\\Classes\\CLSID\\" + classId + u"\\" + subKey;
    for (const RegistryView view : views) {
        if (const auto text = machineText(platform, key, u"", view))
            return *text;
    }
    return {};
}

/// The command line of the class, and the year that its program identifier stands for.
Text classCommand(const Platform& platform, const Text& classId, std::int32_t& year)
{
    const Text progId = classText(platform, classId, u"ProgID");
    const std::size_t dot = progId.rfind(u'.');
    if (dot != Text::npos && dot > 0)
        year = leadingInteger(progId.substr(dot + 1)) + firstYear;
    return classText(platform, classId, u"LocalServer32");
}

bool regressionForced(const Platform& platform)
{
    platform.registry.createKey(RegistryRoot::User, settingsKey);
    const auto value = platform.registry.read(RegistryRoot::User, settingsKey, u"ForceRegressionMode");
    return value && value->asNumber().value_or(0) != 0;
}

std::int32_t officeInstalled(const Platform& platform, std::int32_t year)
{
    for (const RegistryView view : views) {
        const auto value
            = platform.registry.read(RegistryRoot::Machine, setupKey(year), u"Zentrel Office Installed", view);
        if (value && value->type == RegistryType::Number && value->asNumber())
            return *value->asNumber();
    }
    return -1;
}

bool olderThanBackgroundMode(const std::optional<FileVersion>& version)
{
    return !version || version->major < 21 || (version->major == 21 && version->minor < 3);
}

} // namespace

std::optional<Text> resolveProgId(const Platform& platform, const Text& progId)
{
    for (const RegistryView view : views) {
        const auto classId = machineText(platform, u"SOFTWARE\\Classes\\" + progId + u"\\CLSID", u"", view);
        if (classId && !classId->empty())
            return classId;
    }
    return std::nullopt;
}

Text findExecutable(const Platform& platform, const Text& classId, ExecutableSearch& search)
{
    Text path = search.requestedYear != 0 ? installedFolder(platform, search.requestedYear) : Text();
    if (!path.empty())
        path = withoutTrailingSeparators(path) + u"\\ZENTREL.EXE";
    else
        path = classCommand(platform, classId, search.requestedYear);
    if (path.empty())
        return {};

    const auto version = platform.processes.fileVersion(path);
    search.revisionMajor = version ? version->major : std::uint16_t(0);
    search.revisionMinor = version ? version->minor : std::uint16_t(0);
    search.regressionMode = search.forceRegression || regressionForced(platform)
        || (officeInstalled(platform, search.requestedYear) < 1 && olderThanBackgroundMode(version));
    return path + (search.regressionMode ? u" /R" : u" /B");
}

} // namespace zn
