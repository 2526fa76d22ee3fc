#include "addin/session/SavedFormats.h"

#include "addin/session/FindExecutable.h"
#include "base/Format.h"
#include "base/Paths.h"
#include "platform/Registry.h"

#include <algorithm>

namespace zn {

namespace {

/// The class of a session for that release: one that isn't there is replaced by the default one.
std::optional<Text> classOf(const Platform& platform, std::int32_t year)
{
    for (const Text& name : {year == 0 ? Text() : releaseProgId(year), Text(plainProgId)}) {
        try {
            if (!name.empty())
                return resolveProgId(platform, name);
        } catch (const StatusError&) {
            continue;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<bool> savesAs(const Platform& platform, std::int32_t year, TextView file, TextView extension)
{
    const auto classId = classOf(platform, year);
    if (!classId)
        return std::nullopt;
    const auto value = platform.registry.read(RegistryRoot::Machine,
        u"SOFTWARE\\Classes\\CLSID\\" + *classId + u"\\Saves", foldCase(pathExtension(file)), RegistryView::Bits64);
    const auto list = value ? value->asText() : std::nullopt;
    if (!list)
        return std::nullopt;
    const std::vector<Text> saved = split(*list, u' ');
    return std::any_of(saved.begin(), saved.end(), [&](const Text& one) { return equalNoCase(one, extension); });
}

} // namespace zn
