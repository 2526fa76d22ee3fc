#include "arkin/tasks/LaunchInstance.h"
#include "tests/support/windows/Show.h"

#include <QTabWidget>
#include <QTreeView>

namespace zn::test {

namespace {

WindowCase printPage(const std::string& name, PageName page)
{
    return pageCase(name, TaskKind::Printing,
        [page](Pages& pages, const PageSetting& setting) { return pages.makePage(page, setting); });
}

/// The launch of a print of an assembly with its drawing and parts.
WindowCase printCase(const std::string& name, const Prepare& prepare = {})
{
    return {name, [=](Desk& desk, const Look& look) {
                desk.installed.addPrinter(u"Office", desk.installed.path("prints"));
                desk.installed.addPrinter(u"Plotter A0", desk.installed.path("prints"));
                const zn::arkin::Place bolt = desk.addFile("Gearbox/Parts/Bolt.zenprt");
                const zn::arkin::Place housing = desk.addFile("Gearbox/Parts/Housing.zenprt");
                const zn::arkin::Place notes = desk.addFile("Gearbox/Notes.txt");
                const zn::arkin::Place gearbox = desk.addFile("Gearbox/Gearbox.zenasm", {housing, bolt, notes});
                desk.addFile("Gearbox/Gearbox.zendrw", {gearbox});
                zn::arkin::TaskDefinition task;
                task.variables = {{u"__printer_prseltype", 1}, {u"__printer_prnamelist", Text(u"Office\nPlotter A0")},
                    {u"__printer_prname", Text(u"Office")}, {u"__printer_refversiontype", 2},
                    {u"__printer_autoselectrefstype", 3}};
                ArkCmd cmd;
                cmd.parentWindow = desk.window();
                cmd.taskObject = std::make_shared<zn::arkin::LaunchInstance>(task, zn::arkin::RunSetting{});
                ArkSelection selection = {{gearbox.fileId, gearbox.folderId, u"", u"", ArkItemType::File, -1}};
                showModal(
                    look, [&] { desk.pages.showPrintDialog(desk.vaultObject, &cmd, selection, true); }, prepare);
            }};
}

} // namespace

std::vector<WindowCase> printWindows()
{
    return {
        printPage("PrinterDlg", PageName::Printer),
        printPage("PaperSizeDlg", PageName::PaperSize),
        printPage("MarginsDlg", PageName::Margins),
        printPage("FilesDlg", PageName::Files),
        printCase("PrintUIDlg", [](QWidget& dialog) { dialog.findChild<QTreeView*>("fileTree")->expandAll(); }),
        printCase("PrintUIDlg-margins", [](QWidget& dialog) { dialog.findChild<QTabWidget*>()->setCurrentIndex(1); }),
    };
}

} // namespace zn::test
