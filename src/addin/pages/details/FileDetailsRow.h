#pragma once

#include "addin/files/OutputRecord.h"
#include "addin/pages/lists/VListCtrlItem.h"

#include <memory>

namespace zn {

class IconCache;

/// The columns of a run's list of files, in their order.
enum class FileDetailsColumn { Name, Configuration, Printer, Version, Folder, OutputFile };

/// What all rows of one list share: which columns are shown, and the images.
struct FileDetailsLook {
    std::vector<FileDetailsColumn> columns;
    std::shared_ptr<IconCache> icons;
    int printerImage = ImageList::noImage;
};

/// One file of a run.
class FileDetailsRow final : public VListCtrlItem {
public:
    FileDetailsRow(const OutputRecord& record, TaskKind kind, std::shared_ptr<const FileDetailsLook> look);

    QString text(int column) const override;
    int image(int column) const override;

private:
    QString textOf(FileDetailsColumn column) const;
    FileDetailsColumn columnAt(int column) const { return m_look->columns[static_cast<std::size_t>(column)]; }

    Text m_name;
    Text m_configuration;
    Text m_printer;
    std::int32_t m_version;
    std::int32_t m_latestVersion; ///< -1 when the vault doesn't know the file
    Text m_folder;
    Text m_outputFile;
    std::shared_ptr<const FileDetailsLook> m_look;
};

} // namespace zn
