#pragma once

#include "addin/pages/print/PrintFileList.h"
#include "addin/pages/print/PrintUIPos.h"
#include "contracts/host/XRefTree.h"

#include <optional>

namespace zn {

/// What all rows of one tree share.
struct FileRefRows {
    PrintFileList files;
    PrintUIPos expanded; ///< the first level's

    /// Opens the first level and whatever leads to a ticked file, so that all that will print is in sight. A file that
    /// has many places is opened at one of them.
    void expandToTicked();
};

/// The host tree's view of one row: a file at one place.
class FileRefItemImp final : public IFileRefItem,
                             public IFileRefItem2,
                             public IFileRefItem3,
                             public IFileRefItemIcon,
                             public std::enable_shared_from_this<FileRefItemImp> {
public:
    FileRefItemImp(std::shared_ptr<FileRefRows> rows, FileInfo& file, std::shared_ptr<FileRefItemImp> parent = nullptr);

    /// The rows of the first level.
    static std::vector<std::shared_ptr<IFileRefItem>> roots(const std::shared_ptr<FileRefRows>& rows);

    FileInfo& file() const { return m_file; }
    /// Remembers that the row is expanded, or no longer.
    void noteExpanded(bool expanded);

    Status GetName(Text& name) override;
    Status GetPath(Text& path) override;
    Status GetConfiguration(Text& configuration) override;
    Status GetChildCount(std::int32_t& count) override;
    Status GetChild(std::int32_t index, std::shared_ptr<IFileRefItem>& child) override;
    Status GetCheck(FileRefCheck& check) override;
    Status GetStateText(Text& text) override;
    Status GetVersion(std::int32_t& version) override;
    Status GetExpanded(bool& expanded) override;
    Status GetIconType(Text& extension) override;

private:
    const std::vector<FileInfo*>& children();
    bool isAbove(const FileInfo& file) const;
    /// The record of this row; null unless it is expanded.
    PrintUIPos* position() const;

    std::shared_ptr<FileRefRows> m_rows;
    FileInfo& m_file;
    std::shared_ptr<FileRefItemImp> m_parent;
    std::optional<std::vector<FileInfo*>> m_children;
};

} // namespace zn
