#pragma once

#include "addin/libraries/tokenctrl/TokenCtrl.h"
#include "addin/pages/frame/Page.h"

#include <vector>

class QCheckBox;
class QRadioButton;
class QWidget;

namespace zn {

class ExampleLine;
class LogFolderRow;

/// The last page of a Convert Files task: where the output files go, what a clash of names does, whether the result
/// refers to its source, and where error logs lie. Its paths are templates, of which it shows an example.
class COutputFileDetailsPageDlg final : public Page, private tokenctrl::TokenBoxCallback {
public:
    /// `conversion` outlives the page; its format gives the examples their extension. Raises the vault's failures.
    COutputFileDetailsPageDlg(
        PageEnvironment& environment, QWidget* parent, const PageSetting& setting, ConversionPage& conversion);
    ~COutputFileDetailsPageDlg() override;

    void load(const ObjectRef& task) override;
    /// Writes the paths as they are: no field is checked.
    void save(const ObjectRef& task) override;

protected:
    /// Brings the examples up to date, because the format may have changed on its page.
    void showEvent(QShowEvent* event) override;

private:
    /// A path template with its example.
    struct PathField {
        std::unique_ptr<tokenctrl::TokenBox> box;
        ExampleLine* example = nullptr;
    };

    QWidget* makePrimaryBox();
    QWidget* makeSecondaryBox();
    QWidget* makeDuplicateBox();
    LogFolderRow* makeLogFolder();
    /// Makes a path box with its menu button, to be filled by `fillPathBoxes`.
    QWidget* makePathRow(PathField& field, int number, const char* role, const char16_t* name);
    void fillPathBoxes();
    /// The order in which Tab goes through the controls.
    void setKeyOrder();

    void OnTokenTextChanged(tokenctrl::TokenBox& box) override;
    /// Shows the example of a path and folds the vault's root in it. Raises the vault's failures.
    void followPath(const PathField& field);

    PageSetting m_setting;
    ConversionPage& m_conversion;
    PathField m_primary;
    PathField m_secondary;
    QCheckBox* m_promptOutput;
    QCheckBox* m_refToSource;
    QRadioButton* m_replace;
    QRadioButton* m_newVersion;
    LogFolderRow* m_logFolder;
    std::vector<Text> m_variables;     ///< of the vault
    std::vector<Text> m_usedVariables; ///< found in a path since the page was made
};

} // namespace zn
