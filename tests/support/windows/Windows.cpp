#include "support/windows/Windows.h"

#include <QApplication>
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

} // namespace

const std::vector<WindowCase>& allWindows()
{
    static const std::vector<WindowCase> cases = {
        {"MenuCommandDlg", showMenuCommandPage},
    };
    return cases;
}

} // namespace zn::test
