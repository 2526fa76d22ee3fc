#pragma once

#include "addin/libraries/tokenctrl/TokenCtrl.h"

#include <memory>
#include <QObject>

class QLabel;
class QToolButton;
class QWidget;

namespace zn {

class IArkVault;
class PageEnvironment;

/// The edit of a theme's folder: a path that knows the vault's root as its one token, with the line that shows the path
/// resolved. The widgets belong to the page.
class ThemePathBox final : public QObject, private tokenctrl::TokenBoxCallback {
public:
    /// Puts the edit into `place`. In the order of the keyboard it stands where it is made.
    ThemePathBox(PageEnvironment& environment, std::shared_ptr<IArkVault> vault, QWidget* place);
    ~ThemePathBox() override;

    /// Once, before the text is set: the button of the menu and the line of the example.
    void attach(QToolButton* menuButton, QLabel* example);

    std::u16string text() const { return m_box->moGetText(); }
    void setText(std::u16string_view text) { m_box->mvSetText(text); }

private:
    void OnTokenTextChanged(tokenctrl::TokenBox& box) override;
    void showMenu();
    void insertVaultPath();

    PageEnvironment& m_environment;
    std::shared_ptr<IArkVault> m_vault;
    QWidget* m_place;
    QToolButton* m_menuButton = nullptr;
    QLabel* m_example = nullptr;
    std::unique_ptr<tokenctrl::TokenBox> m_box;
};

} // namespace zn
