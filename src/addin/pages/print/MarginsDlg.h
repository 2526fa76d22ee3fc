#pragma once

#include "addin/pages/frame/Page.h"

#include <array>

class QButtonGroup;
class QGroupBox;

namespace zn {

class LinesEdit;
class MillimeterEdit;

/// The page of a print task for the margins and for a header and a footer of its own: each fixed, left to the printer
/// or empty, or asked for at the launch. The fields of a choice that isn't fixed are greyed and keep their values.
class CMarginsDlg final : public Page {
public:
    CMarginsDlg(PageEnvironment& environment, QWidget* parent);

    void load(const ObjectRef& task) override;
    /// Refuses a margin that is no number, with the focus on it.
    bool validate() override;
    void save(const ObjectRef& task) override;

private:
    static constexpr std::size_t sectionCount = 3;
    static constexpr std::size_t marginCount = 4;

    /// One of the three choices. Its fields are the group of controls with the number of its box.
    struct Choice {
        int box = 0;
        QButtonGroup* type = nullptr;
        std::array<LinesEdit*, sectionCount> sections{}; ///< left, centre, right; none for the margins
    };

    QGroupBox* makeMargins();
    QGroupBox* makeTexts(Choice& choice, int box, const char16_t* title, const char16_t* fixed, const char* role);
    void addTypes(Choice& choice, QGroupBox& box, const char* role, const char16_t* none, const char16_t* fixed);
    void enableFields();

    Choice m_margins;
    Choice m_header;
    Choice m_footer;
    std::array<MillimeterEdit*, marginCount> m_edits{}; ///< top, bottom, left, right
};

} // namespace zn
