#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/store/Files.h"

#include <array>
#include <QDialog>

class QLabel;

namespace zn::arkin {

class PictureMaker;
class PicturePane;

/// Two versions of a file beside each other: their pictures, these over each other with what differs in colours, and a
/// list of what differs in cards, references and parts.
class CompareDialog : public QDialog {
public:
    /// `host` outlives the dialog. Raises E_ARK_NO_SUCH_VERSION.
    CompareDialog(
        const DailyHost& host, const Place& place, std::int32_t before, std::int32_t after, QWidget* parent = nullptr);

private:
    QWidget* makePictures(const Place& place);
    QWidget* makeList(const Place& place);
    void showDiff();

    const DailyHost& m_host;
    std::array<std::int32_t, 2> m_versions;
    std::array<PicturePane*, 2> m_sides{};
    PicturePane* m_diff = nullptr;
};

} // namespace zn::arkin
