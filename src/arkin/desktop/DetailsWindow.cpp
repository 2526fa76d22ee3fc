#include "arkin/desktop/DetailsWindow.h"

#include "arkin/desktop/Texts.h"
#include "arkin/tasks/TaskDetails.h"

#include <ctime>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace zn::arkin {

DetailsWindow::DetailsWindow(TaskDetails& details)
    : m_details(details)
    , m_heading(new QLabel(this))
{
    setObjectName("runDetails");
    setWindowTitle(own("Run %1 of “%2”").arg(details.run().id).arg(shown(details.run().taskName)));
    m_heading->setObjectName("heading");
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setWordWrap(true);
    content().addWidget(m_heading);
    auto* const refresh = buttons().addButton(own("&Refresh"), QDialogButtonBox::ActionRole);
    refresh->setObjectName("refresh");
    refresh->setAutoDefault(false);
    auto* const closing = buttons().addButton(QDialogButtonBox::Close);
    closing->setDefault(true);
    const auto again = [this] { inSlot(this, [this] { open(); }); };
    connect(refresh, &QPushButton::clicked, this, again);
    connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this, again);
    connect(&buttons(), &QDialogButtonBox::rejected, this, &DetailsWindow::reject);
    try {
        open();
    } catch (...) {
        m_details.close();
        throw;
    }
}

DetailsWindow::~DetailsWindow() { m_details.close(); }

void DetailsWindow::open()
{
    const auto page = m_details.open(handle());
    delete m_area; // its page has gone with the add-in's object
    m_area = nullptr;
    m_area = makeArea(page.title, page.window);
    content().addWidget(m_area, 1);
    const auto state
        = QCoreApplication::translate("RunState", zn::toUtf8(stateText(m_details.run(), std::time(nullptr))).c_str());
    m_heading->setText(page.title.empty() ? state : QStringLiteral("%1 (%2)").arg(shown(page.title), state));
    m_area->takeFocus();
    fit();
}

} // namespace zn::arkin
