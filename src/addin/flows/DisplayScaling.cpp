#include "addin/flows/DisplayScaling.h"

namespace zn {

namespace {
constexpr int designDpi = 96;
}

int systemDpi(Registry& registry)
{
    const auto value = registry.read(RegistryRoot::User, u"Control Panel\\Desktop", u"LogPixels");
    const int dpi = value ? value->asNumber().value_or(designDpi) : designDpi;
    return dpi >= 48 && dpi <= 960 ? dpi : designDpi;
}

int scaledEdge(Registry& registry, int edge) { return (edge * systemDpi(registry) + designDpi / 2) / designDpi; }

} // namespace zn
