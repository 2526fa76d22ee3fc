#include "platform/Printers.h"

namespace zn {

std::string silenceOver(TextView printer)
{
    return "The printer '" + toUtf8(printer)
        + "' can't be reached: the machine's printing system runs, but doesn't answer. Start it anew, then print "
          "again.";
}

std::optional<Printer> Printers::find(TextView name)
{
    for (Printer& printer : list())
        if (equalNoCase(printer.name, name))
            return std::move(printer);
    return {};
}

} // namespace zn
