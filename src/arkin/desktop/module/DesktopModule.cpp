// The one export of the library of the host's windows.

#include "arkin/desktop/HostDesktop.h"

extern "C" __attribute__((visibility("default"))) zn::arkin::Desktop* makeDesktop(
    const zn::arkin::DesktopSetting& setting)
{
    using namespace zn::arkin;
    return new HostDesktop(setting.wanted ? findDisplay() : Display{"offscreen", {}, {}}, setting.wanted,
        {setting.language, setting.stringFolder});
}
