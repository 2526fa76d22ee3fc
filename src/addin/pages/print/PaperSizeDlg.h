#pragma once

#include "addin/pages/frame/Page.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;

namespace zn {

/// The page of a print task for the default paper size and orientation, and for what of them a launch may change.
class CPaperSizeDlg final : public Page {
public:
    CPaperSizeDlg(PageEnvironment& environment, QWidget* parent);

    void load(const ObjectRef& task) override;
    void save(const ObjectRef& task) override;

private:
    void placeControls();

    QCheckBox* m_useDrawing;
    QComboBox* m_size; ///< the size's code as the data of each row
    QCheckBox* m_sizeChange;
    QButtonGroup* m_orientation; ///< 0 portrait, 1 landscape
    QCheckBox* m_orientationChange;
};

} // namespace zn
