#pragma once

#include "addin/pages/frame/Page.h"

class QButtonGroup;
class QComboBox;

namespace zn {

class LinesEdit;
class PaperSizeList;

/// The first page of a print task: whether its printer is fixed, asked for, or chosen by the paper size. What the
/// choice doesn't use is greyed and keeps its values. Nothing is checked: a printer that the machine doesn't know may
/// be one of the worker's.
class CPrinterDlg final : public Page {
public:
    CPrinterDlg(PageEnvironment& environment, QWidget* parent);

    void load(const ObjectRef& task) override;
    void save(const ObjectRef& task) override;

private:
    void placeControls();
    void fillPrinters();
    void enableFields();

    QButtonGroup* m_type;
    QComboBox* m_name;
    LinesEdit* m_names; ///< one printer to a line
    PaperSizeList* m_sizes;
};

} // namespace zn
