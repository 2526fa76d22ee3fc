#include "arkin/desktop/LaunchDialog.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/tasks/LaunchFlow.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace zn::arkin {

LaunchDialog::LaunchDialog(LaunchFlow& launch)
    : m_launch(launch)
{
    setWindowTitle(shown(launch.task().name));
    setObjectName("launch");
    buttons().setStandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons().button(QDialogButtonBox::Ok)->setDefault(true);
    connect(&buttons(), &QDialogButtonBox::accepted, this, &LaunchDialog::accept);
    connect(&buttons(), &QDialogButtonBox::rejected, this, &LaunchDialog::reject);
    centre();
}

void LaunchDialog::centre()
{
    adjustSize();
    move(screen()->availableGeometry().center() - rect().center());
}

LaunchDialog::~LaunchDialog() { m_launch.close(); }

bool LaunchDialog::run()
{
    const auto step = m_launch.prepare(handle());
    if (step != LaunchStep::Page) {
        if (step == LaunchStep::Stopped && !m_launch.text().empty())
            tell(this, shown(m_launch.text()));
        return step == LaunchStep::Ready;
    }
    auto* const area = makeArea(m_launch.text(), m_launch.pageWindow());
    content().addWidget(area);
    orderTabs();
    setWindowTitle(QStringLiteral("%1: %2").arg(shown(m_launch.task().name), shown(m_launch.text())));
    area->takeFocus();
    centre();
    return exec() == Accepted;
}

void LaunchDialog::accept()
{
    inSlot(this, [&] {
        const auto areas = findChildren<PageArea*>();
        if (!areas.isEmpty() && !areas.front()->mayLeave())
            return;
        if (m_launch.accept())
            PageDialog::accept();
    });
}

} // namespace zn::arkin
