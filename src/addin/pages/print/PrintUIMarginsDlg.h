#pragma once

#include "addin/pages/frame/LexWnd.h"
#include "addin/pages/print/PrintSettings.h"

#include <array>

class QCheckBox;
class QRadioButton;
class QSpinBox;

namespace zn {

class LinesEdit;

/// The second tab of the print dialog: margins, header and footer, as far as the administrator has left them open.
class PrintUIMarginsDlg final : public QWidget, private LexWnd {
public:
    PrintUIMarginsDlg(PageEnvironment& environment, QWidget* parent, const PrintSettings& settings);

    /// Fills the edits with what the run holds. Raises the host's failures.
    void load(const ObjectRef& task);
    /// Writes what the user chose for the groups that are shown. Raises the first failure of the host.
    void save(const ObjectRef& task);

    struct BandTexts;

private:
    /// A header or a footer.
    struct Band {
        const char16_t* typeVariable = nullptr;
        std::array<const char16_t*, 3> variables{};
        bool isShown = false;
        QCheckBox* isCustom = nullptr;
        std::array<LinesEdit*, 3> sections{};
    };

    QWidget* makeMargins();
    QWidget* makeBand(Band& band, int firstNumber, const char* role, const BandTexts& texts);
    void saveBand(const Band& band, const ObjectRef& task) const;
    void enableEdits();

    bool m_showsMargins;
    QRadioButton* m_customMargins = nullptr;
    std::array<QSpinBox*, 4> m_margins{};
    Band m_header{
        u"__printer_headertype", {u"__printer_headerleft", u"__printer_headercenter", u"__printer_headerright"}};
    Band m_footer{
        u"__printer_footertype", {u"__printer_footerleft", u"__printer_footercenter", u"__printer_footerright"}};
};

} // namespace zn
