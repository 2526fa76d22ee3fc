#pragma once

#include "platform/Printers.h"

#include <filesystem>

namespace zn {

class FileSystem;
class Registry;

/// Printers that put each job as a PDF file into a folder: below `folderPrintersKey` of the machine root a key for
/// each printer, named like it, whose value "Folder" is the folder, as a backslash path or as this machine writes it.
///
/// A job's file appears whole, under the job's title; a name that is taken gets a number. The folder isn't made by a
/// job: one that is missing is told, since it may be a disk that isn't mounted.
class FolderPrinters : public Printers {
public:
    /// Both outlive this object.
    FolderPrinters(Registry& registry, FileSystem& files)
        : m_registry(registry)
        , m_files(files)
    {
    }

    std::vector<Printer> list() override;
    void print(const Text& printer, const PrintJob& job) override;

    /// Where a printer's files appear. Raises `StatusError` if there is no such printer.
    std::filesystem::path folderOf(const Text& printer);

private:
    Registry& m_registry;
    FileSystem& m_files;
};

inline constexpr const char16_t* folderPrintersKey = u"SOFTWARE\\Zentrel\\Printers";
inline constexpr const char16_t* printerFolderValue = u"Folder";

} // namespace zn
