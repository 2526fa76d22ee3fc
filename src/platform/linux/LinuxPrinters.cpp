#include "platform/linux/LinuxPrinters.h"

#include "base/Status.h"

#include <algorithm>

namespace zn {

std::vector<Printer> LinuxPrinters::list()
{
    std::vector<Printer> printers = m_folders.list();
    for (Printer& queue : m_queues.list()) {
        const bool taken = std::ranges::any_of(
            printers, [&](const Printer& printer) { return equalNoCase(printer.name, queue.name); });
        if (!taken)
            printers.push_back(std::move(queue));
    }
    return printers;
}

void LinuxPrinters::print(const Text& printer, const PrintJob& job)
{
    Printers* const all[] = {&m_folders, &m_queues};
    for (Printers* printers : all) {
        if (const auto found = printers->find(printer))
            return printers->print(found->name, job);
    }
    if (isSilent())
        throw StatusError(E_FAIL, silenceOver(printer));
    throw StatusError(E_FAIL,
        "There is no printer '" + toUtf8(printer) + "' on this machine. 'arkin printers' lists those that there are.");
}

} // namespace zn
