#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/store/VersionDiff.h"

#include <array>
#include <optional>
#include <QDialog>

class QTreeWidget;
class QTreeWidgetItem;

namespace zn::arkin {

class PictureMaker;
class PicturePane;

/// Two versions of a file beside each other: their pictures, these over each other with what differs in colours, and a
/// list of what differs in cards, references, parts, and, for models, in volume, area, size and bodies.
class CompareDialog : public QDialog {
public:
    /// `host` outlives the dialog. Raises E_ARK_NO_SUCH_VERSION.
    CompareDialog(
        const DailyHost& host, const Place& place, std::int32_t before, std::int32_t after, QWidget* parent = nullptr);

private:
    QWidget* makePictures(const Place& place);
    QWidget* makeList(const Place& place);
    QTreeWidgetItem* addRow(const Difference& difference);
    void askForMeasures(const Place& place);
    void showMeasures();
    void showDiff();

    const DailyHost& m_host;
    std::array<std::int32_t, 2> m_versions;
    std::array<PicturePane*, 2> m_sides{};
    PicturePane* m_diff = nullptr;
    QTreeWidget* m_list = nullptr;
    std::array<std::optional<std::string>, 2> m_measures;
};

} // namespace zn::arkin
