#pragma once

#include "platform/linux/CupsPrinters.h"
#include "platform/linux/FolderPrinters.h"

namespace zn {

/// Folder printers, then the queues of the printing system. Of two with the same name the folder printer counts.
class LinuxPrinters : public Printers {
public:
    LinuxPrinters(Registry& registry, FileSystem& files)
        : m_folders(registry, files)
    {
    }

    std::vector<Printer> list() override;
    bool isSilent() const override { return m_queues.isSilent(); }
    void print(const Text& printer, const PrintJob& job) override;

private:
    FolderPrinters m_folders;
    CupsPrinters m_queues;
};

} // namespace zn
