#pragma once

#include "addin/pages/frame/Page.h"

#include <span>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace zn {

/// What tells the two twins apart: their texts, their variables and the formats that can hold several in one file.
struct OutputTemplate {
    const char16_t* lexName;
    const char16_t* outputTitle;
    const char16_t* all;
    const char16_t* lastActive;
    const char16_t* named;
    const char16_t* fileTitle;
    const char16_t* oneFileEach;
    const char16_t* sameFile;
    const char16_t* outputVariable; ///< bits: 1 the user may change this, 2 all, 4 last active, 8 named
    const char16_t* nameVariable;   ///< a name with wildcards, stored only with bit 8
    const char16_t* fileVariable;   ///< bits: 1 the user may change this, 2 all in the same file, 4 one file each
    std::span<const std::int32_t> groupingFormats; ///< codes of the formats that offer a choice of grouping
};

/// A sub-page of the conversion settings: which configurations or sheets of a document are output, and whether they
/// share a file. At a launch it shows what the administrator left open.
class OutputTemplateDlg : public Page {
public:
    void load(const ObjectRef& task) override;
    void save(const ObjectRef& task) override;

    /// To be told at every change of the output format.
    void setFormat(std::int32_t code);

protected:
    /// `texts` outlives the page.
    OutputTemplateDlg(PageEnvironment& environment, QWidget* parent, const OutputTemplate& texts, bool launch);

private:
    QGroupBox* makeOutputBox();
    QGroupBox* makeFileBox();
    void loadOutput(const ObjectRef& task);
    void loadFiles(const ObjectRef& task);
    void hideWhatIsFixed();
    void refresh();
    bool offersGrouping() const;

    const OutputTemplate& m_texts;
    const bool m_launch;
    std::int32_t m_format = 0;

    QRadioButton* m_all = nullptr;
    QRadioButton* m_lastActive = nullptr;
    QRadioButton* m_named = nullptr;
    QLabel* m_bracketNote = nullptr;
    QLineEdit* m_name = nullptr;
    QCheckBox* m_allowOutput = nullptr;
    QRadioButton* m_oneFileEach = nullptr;
    QRadioButton* m_sameFile = nullptr;
    QCheckBox* m_allowFiles = nullptr;
};

} // namespace zn
