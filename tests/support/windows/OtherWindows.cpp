#include "addin/files/FileLogic.h"
#include "addin/pages/script/ScriptPageDlg.h"
#include "arkin/tasks/LaunchInstance.h"
#include "tests/support/pages/Person.h"
#include "tests/support/windows/Show.h"

#include <QPushButton>

namespace zn::test {

namespace {

void showScriptDialog(Desk& desk, const Look& look)
{
    const PageSetting setting = desk.setting(TaskKind::Conversion);
    showModal(look, [&] { editScript(desk.pages.environment(), nullptr, setting.task); });
}

void showSelectionDialog(Desk& desk, const Look& look)
{
    ArkSelection selection;
    showModal(
        look, [&] { desk.pages.askSelection(desk.setting(TaskKind::Conversion), u"Drawings to PDF", selection); });
}

/// The help beside the dialog that it is about.
void showHelp(Desk& desk, const Look& look)
{
    ArkSelection selection;
    showModal(
        [&](QWidget& dialog) {
            find<QPushButton>(dialog, "help")->click();
            look(*find<QWidget>(dialog, "helpWindow"));
        },
        [&] { desk.pages.askSelection(desk.setting(TaskKind::Conversion), u"Drawings to PDF", selection); });
}

/// A finished conversion of two files.
void showFileDetailsPage(Desk& desk, const Look& look)
{
    const auto run = std::make_shared<zn::arkin::LaunchInstance>(zn::arkin::TaskDefinition{}, zn::arkin::RunSetting{});
    FileLogic logic(desk.platform);
    logic.Initialize(desk.vaultObject, TaskKind::Conversion, false);
    std::vector<std::unique_ptr<OutputRecord>> sources; // the list refers to them
    for (const char* name : {"Housing", "Bolt"}) {
        const std::string file = "Gearbox/" + std::string(name) + ".zenprt";
        const zn::arkin::Place place = desk.addFile(file);
        sources.push_back(std::make_unique<OutputRecord>());
        sources.back()->path = Desk::path(file);
        sources.back()->docId = place.fileId;
        sources.back()->projId = place.folderId;
        sources.back()->version = 1;
        logic.SetCurrentSource(sources.back().get());
        logic.NoteSavedFile(Desk::path("Converted/" + std::string(name) + ".step"), u"Default", false);
    }
    logic.WriteList(run, TaskKind::Conversion, nullptr);
    const auto page
        = desk.pages.makeFileDetailsPage({desk.vaultObject, run, TaskKind::Conversion, desk.window()}, true);
    showPage(desk, *page, look, [](QWidget& shown) { shown.setMinimumWidth(760); });
}

} // namespace

std::vector<WindowCase> otherWindows()
{
    return {
        pageCase("MenuCommandDlg", TaskKind::Conversion,
            [](Pages& pages, const PageSetting& setting) { return pages.makeMenuCommandPage(setting); }),
        pageCase("ScriptPageDlg", TaskKind::General,
            [](Pages& pages, const PageSetting& setting) { return pages.makePage(PageName::Script, setting); }),
        {"ScriptDlg", showScriptDialog},
        {"SelectionDlg", showSelectionDialog},
        {"HelpWindow", showHelp},
        {"FileDetailsPageDlg", showFileDetailsPage},
    };
}

} // namespace zn::test
