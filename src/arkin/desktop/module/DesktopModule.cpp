// The one export of the library of the host's windows.

#include "arkin/desktop/HostDesktop.h"

extern "C" __attribute__((visibility("default"))) zn::arkin::Desktop* makeDesktop(bool wanted)
{
    return new zn::arkin::HostDesktop(zn::arkin::findDisplay(), wanted);
}
