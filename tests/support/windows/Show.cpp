#include "tests/support/windows/Show.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace zn::test {

namespace {

/// Until all layouts know the sizes that they give each other: a box of tokens grows when it knows its width.
void settle()
{
    for (int round = 0; round < 5; ++round) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

} // namespace

void showPage(Desk& desk, TaskPage& page, const Look& look, const Prepare& prepare)
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

WindowCase pageCase(const std::string& name, TaskKind kind, const MakePage& make, const zn::arkin::Variables& variables,
    const Prepare& prepare)
{
    return {name, [=](Desk& desk, const Look& look) {
                const PageSetting setting = desk.setting(kind, variables);
                const auto page = make(desk.pages, setting);
                page->load(setting.task);
                showPage(desk, *page, look, prepare);
            }};
}
void showModal(const Look& look, const std::function<void()>& run, const Prepare& prepare)
{
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        timer.stop();
        if (prepare)
            prepare(*dialog);
        settle();
        look(*dialog);
        dialog->reject();
    });
    timer.start(1);
    run();
}

} // namespace zn::test
