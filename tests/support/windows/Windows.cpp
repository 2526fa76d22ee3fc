#include "support/windows/Windows.h"

#include "addin/OutputFormats.h"
#include "pages/options/AdvancedConvOpDlg.h"
#include "pages/script/ScriptPageDlg.h"

#include <QApplication>
#include <QDialog>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace zn::test {

namespace {

using Prepare = std::function<void(QWidget& page)>;

/// Until all layouts know the sizes that they give each other: a box of tokens grows when it knows its width.
void settle()
{
    for (int round = 0; round < 5; ++round) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

/// Shows a page in a window of the size that it asks for, as the host's property dialog does.
void showPage(Desk& desk, TaskPage& page, const Look& look, const Prepare& prepare = {})
{
    QWidget* widget = QWidget::find(static_cast<WId>(page.window()));
    if (!widget)
        throw std::runtime_error("The page has no window.");
    QVBoxLayout rows(&desk.host);
    rows.addWidget(widget);
    if (prepare)
        prepare(*widget);
    widget->show();
    desk.host.show();
    desk.host.resize(desk.host.sizeHint().expandedTo({480, 360}));
    settle();
    // Texts that wrap need more than the least height at this width.
    desk.host.resize(desk.host.width(), std::max(desk.host.height(), rows.totalHeightForWidth(desk.host.width())));
    settle();
    look(*widget);
    desk.host.hide();
}

void showMenuCommandPage(Desk& desk, const Look& look)
{
    const PageSetting setting = desk.setting(TaskKind::Conversion);
    const auto page = desk.pages.makeMenuCommandPage(setting);
    page->load(setting.task);
    showPage(desk, *page, look);
}

/// Runs what opens a modal dialog, looks at the dialog when it stands there, and cancels it.
void showModal(const Look& look, const std::function<void()>& run)
{
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        timer.stop();
        settle();
        look(*dialog);
        dialog->reject();
    });
    timer.start(1);
    run();
}

WindowCase pageCase(const std::string& name, PageName page, TaskKind kind)
{
    return {name, [=](Desk& desk, const Look& look) {
                const PageSetting setting = desk.setting(kind);
                const auto made = desk.pages.makePage(page, setting);
                made->load(setting.task);
                showPage(desk, *made, look);
            }};
}

using arkin::Variables;

/// The conversion page as an administrator sees it.
WindowCase conversionCase(const std::string& name, const Variables& variables, const Prepare& prepare = {})
{
    return {name, [=](Desk& desk, const Look& look) {
                const PageSetting setting = desk.setting(TaskKind::Conversion, variables);
                const auto page = desk.pages.makeConversionPage(setting, false);
                page->load(setting.task);
                showPage(desk, *page, look, prepare);
            }};
}

/// The conversion page as a user sees it who launches the task on these kinds of files.
WindowCase launchCase(const std::string& name, const Variables& variables, std::int32_t selectedKinds)
{
    return {name, [=](Desk& desk, const Look& look) {
                const PageSetting setting = desk.setting(TaskKind::Conversion, variables);
                const auto page = desk.pages.makeConversionPage(setting, true);
                page->loadForLaunch(setting.task, selectedKinds);
                showPage(desk, *page, look);
            }};
}

void selectLastTab(QWidget& page, const char* tabs)
{
    auto* widget = page.findChild<QTabWidget*>(tabs);
    widget->setCurrentIndex(widget->count() - 1);
}

void showOutputFileDetailsPage(Desk& desk, const Look& look)
{
    const PageSetting setting = desk.setting(TaskKind::Conversion);
    const auto conversion = desk.pages.makeConversionPage(setting, false);
    conversion->load(setting.task);
    const auto page = desk.pages.makeOutputFileDetailsPage(setting, *conversion);
    page->load(setting.task);
    showPage(desk, *page, look);
}

void showFileCardPage(Desk& desk, const Look& look)
{
    const PageSetting setting = desk.setting(
        TaskKind::Conversion, {{u"FileCardData", Text(u"Number;1;\nProject;100;Project\nDescription;8;Converted\n")}});
    const auto page = desk.pages.makePage(PageName::FileCard, setting);
    page->load(setting.task);
    showPage(desk, *page, look, [](QWidget& shown) {
        auto* list = shown.findChild<QTreeWidget*>("cardVariables");
        list->setCurrentItem(list->topLevelItem(2));
    });
}

void showScriptDialog(Desk& desk, const Look& look)
{
    const PageSetting setting = desk.setting(TaskKind::Conversion);
    showModal(look, [&] { editScript(desk.pages.environment(), nullptr, setting.task); });
}

/// The options of a format in their frame.
WindowCase optionCase(const std::string& name, std::uint32_t formatCode)
{
    return {name, [=](Desk& desk, const Look& look) {
                const OutputFormat& format = outputFormats()[formatCode];
                CAdvancedConvOpDlg frame(desk.pages.environment(), desk.setting(TaskKind::Conversion).task, formatCode,
                    format.label, nullptr, true);
                showModal(look, [&] { frame.DoModal(); });
            }};
}

} // namespace

const std::vector<WindowCase>& allWindows()
{
    static const std::vector<WindowCase> cases = {
        {"MenuCommandDlg", showMenuCommandPage},
        conversionCase("ConversionSettingsPageDlg", {{u"FileFormat", Text(u"Adobe PDF (*.pdf)")}}),
        conversionCase("ConversionSettingsPageDlg-sheets",
            {{u"FileFormat", Text(u"Viewpane (*.vprt; *.vasm; *.vdrw)")}},
            [](QWidget& page) { selectLastTab(page, "outputTabs"); }),
        conversionCase("ConversionSettingsPageDlg-3dpdf", {{u"FileFormat", Text(u"3D PDF - MBD (*.pdf)")}}),
        conversionCase("ConversionSettingsPageDlg-3dpdf-part", {{u"FileFormat", Text(u"3D PDF - MBD (*.pdf)")}},
            [](QWidget& page) { selectLastTab(page, "themeTabs"); }),
        launchCase("ConversionSettingsPageDlg-launch", {}, 4 | 8 | 16),
        launchCase("ConversionSettingsPageDlg-launch-pdf",
            {{u"FileFormat", Text(u"Adobe PDF (*.pdf)")}, {u"PromptOutput", false}, {u"SourceRefs", 2}}, 16),
        {"FileCardPageDlg", showFileCardPage},
        {"OutputFileDetailsPageDlg", showOutputFileDetailsPage},
        pageCase("ScriptPageDlg", PageName::Script, TaskKind::General),
        {"ScriptDlg", showScriptDialog},
        optionCase("ConvOpACISDlg", 3),
        optionCase("ConvOpPDFDlg", 5),
        optionCase("ConvOpTifPsdDlg", 6),
        optionCase("ConvOpDWG_DXFDlg", 8),
        optionCase("ConvOpViewpaneDlg", 10),
        optionCase("ConvOpIGESDlg", 13),
        optionCase("ConvOpParasolidDlg", 16),
        optionCase("ConvOpSTEPDlg", 18),
        optionCase("ConvOpSTLDlg", 19),
        optionCase("ConvOpVRMLDlg", 22),
    };
    return cases;
}

} // namespace zn::test
