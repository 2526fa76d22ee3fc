#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/store/FolderListing.h"

#include <optional>
#include <QComboBox>
#include <unordered_set>

namespace zn::arkin {

/// Which files of a folder a person wants to see: all, what he has checked out, what was changed or is out of date on
/// this machine, or what a task has made no output of in its latest version.
class FileFilterBox : public QComboBox {
public:
    explicit FileFilterBox(const DailyHost& host, QWidget* parent = nullptr);

    /// The files that fit, of those; none for all.
    std::optional<std::unordered_set<std::int32_t>> fitting(
        std::int32_t folderId, const std::vector<ListedFile>& files) const;

private:
    const DailyHost& m_host;
};

} // namespace zn::arkin
