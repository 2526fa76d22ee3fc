#include "support/windows/Windows.h"

#include "addin/OutputFormats.h"
#include "pages/options/AdvancedConvOpDlg.h"
#include "pages/script/ScriptPageDlg.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <QVBoxLayout>

namespace zn::test {

namespace {

using Prepare = std::function<void(QWidget& page)>;

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
    QApplication::processEvents();
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
