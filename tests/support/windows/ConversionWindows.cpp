#include "addin/pages/options/AdvancedConvOpDlg.h"
#include "addin/variables/OutputFormats.h"
#include "tests/support/windows/Show.h"

#include <QTabWidget>
#include <QTreeWidget>

namespace zn::test {

namespace {

using zn::arkin::Variables;

/// The conversion page as an administrator sees it.
WindowCase conversionCase(const std::string& name, const Variables& variables, const Prepare& prepare = {})
{
    return pageCase(
        name, TaskKind::Conversion,
        [](Pages& pages, const PageSetting& setting) { return pages.makeConversionPage(setting, false); }, variables,
        prepare);
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

void selectThirdVariable(QWidget& page)
{
    auto* list = page.findChild<QTreeWidget*>("cardVariables");
    list->setCurrentItem(list->topLevelItem(2));
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

std::vector<WindowCase> conversionWindows()
{
    return {
        conversionCase("ConversionSettingsPageDlg", {{u"FileFormat", Text(u"Adobe PDF (*.pdf)")}}),
        conversionCase("ConversionSettingsPageDlg-sheets",
            {{u"FileFormat", Text(u"Viewpane (*.vprt; *.vasm; *.vdrw)")}},
            [](QWidget& page) { selectLastTab(page, "outputTabs"); }),
        conversionCase("ConversionSettingsPageDlg-brackets",
            {{u"FileFormat", Text(u"STL (*.stl)")}, {u"OutputConfs", 9}, {u"NamedConf", Text(u"[ML]*")}}),
        conversionCase("ConversionSettingsPageDlg-3dpdf", {{u"FileFormat", Text(u"3D PDF - MBD (*.pdf)")}}),
        conversionCase("ConversionSettingsPageDlg-3dpdf-part", {{u"FileFormat", Text(u"3D PDF - MBD (*.pdf)")}},
            [](QWidget& page) { selectLastTab(page, "themeTabs"); }),
        launchCase("ConversionSettingsPageDlg-launch", {}, 4 | 8 | 16),
        launchCase("ConversionSettingsPageDlg-launch-pdf",
            {{u"FileFormat", Text(u"Adobe PDF (*.pdf)")}, {u"PromptOutput", false}, {u"SourceRefs", 2}}, 16),
        pageCase(
            "FileCardPageDlg", TaskKind::Conversion,
            [](Pages& pages, const PageSetting& setting) { return pages.makePage(PageName::FileCard, setting); },
            {{u"FileCardData", Text(u"Number;1;\nProject;100;Project\nDescription;8;Converted\n")}},
            selectThirdVariable),
        {"OutputFileDetailsPageDlg", showOutputFileDetailsPage},
    };
}

std::vector<WindowCase> optionWindows()
{
    return {
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
}

} // namespace zn::test
