#include "addin/pages/Pages.h"

#include "addin/pages/conversion/ConversionSettingsPageDlg.h"
#include "addin/pages/conversion/FileCardPageDlg.h"
#include "addin/pages/conversion/OutputFileDetailsPageDlg.h"
#include "addin/pages/details/FileDetailsPageDlg.h"
#include "addin/pages/frame/Page.h"
#include "addin/pages/menu/MenuCommandDlg.h"
#include "addin/pages/print/FilesDlg.h"
#include "addin/pages/print/MarginsDlg.h"
#include "addin/pages/print/PaperSizeDlg.h"
#include "addin/pages/print/PrinterDlg.h"
#include "addin/pages/print/PrintUIDlg.h"
#include "addin/pages/script/ScriptPageDlg.h"
#include "addin/pages/selection/SelectionDlg.h"
#include "qtglue/Texts.h"

namespace zn {

namespace {

class MenuCommandHandle final : public PageHandle<MenuCommandPage, CMenuCommandDlg> {
public:
    using PageHandle::PageHandle;
    MenuChoice choice() const override { return present().choice(); }
};

class ConversionHandle final : public PageHandle<ConversionPage, CConversionSettingsPageDlg> {
public:
    using PageHandle::PageHandle;
    void loadForLaunch(const ObjectRef& instance, std::int32_t selectedKinds) override
    {
        present().LoadSettings(instance, selectedKinds);
    }
    bool isPageNeeded() const override { return present().isPageNeeded(); }
    Text formatLabel() const override { return present().formatLabel(); }
    std::int32_t formatCode() const override { return present().formatCode(); }
};

[[noreturn]] void notThere(const char* what)
{
    throw StatusError(E_NOTIMPL, std::string("This build has no ") + what + ".");
}

} // namespace

Pages::Pages(const Platform& platform)
    : m_environment(platform)
{
    m_environment.lex();
}

bool Pages::isWindow(std::int32_t handle) const { return windowOf(handle) != nullptr; }

Text Pages::text(std::int32_t number, const char16_t* defaultText)
{
    return typed(m_environment.text(number, defaultText));
}

void Pages::tell(std::int32_t window, const Text& sentence)
{
    m_environment.messages().tell(windowOf(window), shown(sentence));
}

Text Pages::takeUnspoken() { return typed(m_environment.messages().takeUnspoken()); }

std::unique_ptr<MenuCommandPage> Pages::makeMenuCommandPage(const PageSetting& setting)
{
    return std::make_unique<MenuCommandHandle>(
        new CMenuCommandDlg(m_environment, windowOf(setting.parentWindow), setting.kind), setting.task);
}

std::unique_ptr<ConversionPage> Pages::makeConversionPage(const PageSetting& setting, bool launch)
{
    return std::make_unique<ConversionHandle>(
        new CConversionSettingsPageDlg(m_environment, windowOf(setting.parentWindow), setting, launch), setting.task);
}

std::unique_ptr<TaskPage> Pages::makeOutputFileDetailsPage(const PageSetting& setting, ConversionPage& conversion)
{
    return std::make_unique<PageHandle<TaskPage, COutputFileDetailsPageDlg>>(
        new COutputFileDetailsPageDlg(m_environment, windowOf(setting.parentWindow), setting, conversion),
        setting.task);
}

std::unique_ptr<TaskPage> Pages::makeFileDetailsPage(const PageSetting& setting, bool finished)
{
    return std::make_unique<PageHandle<TaskPage, CFileDetailsPageDlg>>(
        new CFileDetailsPageDlg(m_environment, windowOf(setting.parentWindow), setting, finished), setting.task);
}

std::unique_ptr<TaskPage> Pages::makePage(PageName name, const PageSetting& setting)
{
    QWidget* parent = windowOf(setting.parentWindow);
    switch (name) {
    case PageName::FileCard:
        return std::make_unique<PageHandle<TaskPage, CFileCardPageDlg>>(
            new CFileCardPageDlg(m_environment, parent, setting.vault), setting.task);
    case PageName::Printer:
        return std::make_unique<PageHandle<TaskPage, CPrinterDlg>>(
            new CPrinterDlg(m_environment, parent), setting.task);
    case PageName::PaperSize:
        return std::make_unique<PageHandle<TaskPage, CPaperSizeDlg>>(
            new CPaperSizeDlg(m_environment, parent), setting.task);
    case PageName::Margins:
        return std::make_unique<PageHandle<TaskPage, CMarginsDlg>>(
            new CMarginsDlg(m_environment, parent), setting.task);
    case PageName::Files:
        return std::make_unique<PageHandle<TaskPage, CFilesDlg>>(
            new CFilesDlg(m_environment, parent, setting), setting.task);
    case PageName::Script:
        return std::make_unique<PageHandle<TaskPage, CScriptPageDlg>>(
            new CScriptPageDlg(m_environment, parent, CScriptPageDlg::Form::Page), setting.task);
    }
    notThere("page of this name");
}

bool Pages::askSelection(const PageSetting& setting, const Text& taskName, ArkSelection& selection)
{
    CSelectionDlg dialog(m_environment, windowOf(setting.parentWindow), setting.vault, taskName);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    selection = dialog.GetSelection();
    return true;
}

bool Pages::showPrintDialog(const std::shared_ptr<IArkVault>& vault, ArkCmd* cmd, ArkSelection& selection, bool show)
{
    return zn::showPrintDialog(m_environment, vault, cmd, selection, show);
}

} // namespace zn
