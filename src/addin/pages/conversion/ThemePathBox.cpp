#include "addin/pages/conversion/ThemePathBox.h"

#include "addin/pages/frame/PageEnvironment.h"
#include "addin/pages/paths/PathTokens.h"
#include "base/Status.h"
#include "contracts/host/ArkVault.h"
#include "qtglue/Texts.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QMenu>
#include <QToolButton>

namespace zn {

namespace {

constexpr const char16_t* vaultPathToken = u"<VaultPath>";

} // namespace

ThemePathBox::ThemePathBox(PageEnvironment& environment, std::shared_ptr<IArkVault> vault, QWidget* place)
    : QObject(place)
    , m_environment(environment)
    , m_vault(std::move(vault))
    , m_place(place)
    , m_box(environment.makeTokenBox())
{
    m_box->mvDDX_Control(place);
    const QString name = m_environment.text(27, u"Vault Root Folder Path");
    m_box->mvAddPattern(vaultPathToken, false, typed(name).c_str(), nullptr, nullptr);
}

ThemePathBox::~ThemePathBox() { m_box->mvRegisterCallback(nullptr); }

void ThemePathBox::attach(QToolButton* menuButton, QLabel* example)
{
    m_menuButton = menuButton;
    m_example = example;
    connect(menuButton, &QToolButton::clicked, this,
        [this] { m_environment.messages().inSlot(m_place, [this] { showMenu(); }); });
    m_box->mvRegisterCallback(this);
    setText({});
}

void ThemePathBox::OnTokenTextChanged(tokenctrl::TokenBox& box)
{
    m_environment.messages().inSlot(m_place, [&] {
        Text root;
        checkStatus(m_vault->GetRootFolderPath(root));
        const QString path = shown(box.moGetText()).replace(shown(vaultPathToken), shown(root));
        m_example->setText(m_environment.text(123, u"Example") + ": " + path);
        FoldVaultRoot(box, *m_vault);
    });
}

/// The box's own menu would offer nothing: its token has no place there.
void ThemePathBox::showMenu()
{
    auto* menu = new QMenu(m_menuButton);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(m_environment.text(27, u"Vault Root Folder Path"), this,
        [this] { m_environment.messages().inSlot(m_place, [this] { insertVaultPath(); }); });
    menu->popup(m_menuButton->mapToGlobal(QPoint(0, 0)));
}

/// As if typed, so that it takes the place of the selection and can be undone.
void ThemePathBox::insertVaultPath()
{
    QWidget* edit = m_place->focusProxy();
    edit->setFocus(Qt::PopupFocusReason);
    QInputMethodEvent event;
    event.setCommitString(shown(vaultPathToken));
    QCoreApplication::sendEvent(edit, &event);
}

} // namespace zn
