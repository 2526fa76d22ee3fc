#pragma once

#include "addin/libraries/tokenctrl/TokenCtrl.h"
#include "base/Text.h"

#include <memory>
#include <QObject>
#include <vector>

class QLabel;
class QToolButton;

namespace zn {

class IArkVault;
class PageEnvironment;

/// The output path of a launch: a token edit that knows the path tokens and the vault's card variables, its menu, and
/// the example for the format chosen. The widgets belong to the page, and this to the edit's place.
class OutputPathRow final : public QObject, private tokenctrl::TokenBoxCallback {
public:
    /// Puts the edit into `place`. In the order of the keyboard it stands where it is made.
    OutputPathRow(PageEnvironment& environment, std::shared_ptr<IArkVault> vault, QWidget* place);
    ~OutputPathRow() override;

    /// Once, before the text is set: the button of the menu and the line of the example.
    void attach(QToolButton* menuButton, QLabel* example);

    Text text() const { return m_box->moGetText(); }
    void setText(TextView text) { m_box->mvSetText(text); }

    /// From now on the example ends with the extension of this format.
    void setFormat(Text label, std::int32_t code);

    /// The card variables that this path and `secondPath` name, and those that this was found to name before, separated
    /// by commas.
    Text usedVariables(TextView secondPath);

private:
    void OnTokenTextChanged(tokenctrl::TokenBox& box) override;
    void showExample();

    PageEnvironment& m_environment;
    std::shared_ptr<IArkVault> m_vault;
    QWidget* m_place;
    QLabel* m_example = nullptr;
    std::unique_ptr<tokenctrl::TokenBox> m_box;
    std::vector<Text> m_variables;
    std::vector<Text> m_usedVariables;
    Text m_formatLabel;
    std::int32_t m_formatCode = 0;
};

} // namespace zn
