#include "platform/Printers.h"

namespace zn {

std::optional<Printer> Printers::find(TextView name)
{
    for (Printer& printer : list())
        if (equalNoCase(printer.name, name))
            return std::move(printer);
    return {};
}

} // namespace zn
