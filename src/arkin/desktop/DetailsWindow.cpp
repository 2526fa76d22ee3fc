#include "arkin/desktop/DetailsWindow.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/RunTexts.h"
#include "arkin/tasks/TaskDetails.h"

#include <ctime>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

constexpr int shownLines = 6;

} // namespace

DetailsWindow::DetailsWindow(TaskDetails& details)
    : m_details(details)
    , m_heading(new QLabel(this))
    , m_messagesTitle(new QLabel(own("&Messages:"), this))
    , m_messages(new QPlainTextEdit(this))
{
    setObjectName("runDetails");
    setWindowTitle(own("Run %1 of “%2”").arg(details.run().id).arg(shown(details.run().taskName)));
    m_heading->setObjectName("heading");
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setWordWrap(true);
    content().addWidget(m_heading);
    m_messages->setObjectName("messages");
    m_messages->setReadOnly(true);
    m_messages->setTabChangesFocus(true);
    m_messages->setMaximumHeight(shownLines * m_messages->fontMetrics().lineSpacing());
    m_messagesTitle->setBuddy(m_messages);
    content().addWidget(m_messagesTitle);
    content().addWidget(m_messages);
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
    content().insertWidget(1, m_area, 1); // between heading and messages
    orderTabs();
    const auto state = runStateText(m_details.run(), std::time(nullptr));
    m_heading->setText(page.title.empty() ? state : QStringLiteral("%1 (%2)").arg(shown(page.title), state));
    showMessages();
    m_area->takeFocus();
    fit();
}

void DetailsWindow::showMessages()
{
    QStringList lines;
    for (const auto& message : m_details.messages())
        lines << (message.path.empty() ? shown(message.sentence)
                                       : QStringLiteral("%1: %2").arg(shown(message.path), shown(message.sentence)));
    m_messages->setPlainText(lines.join('\n'));
    m_messagesTitle->setVisible(!lines.isEmpty());
    m_messages->setVisible(!lines.isEmpty());
}

} // namespace zn::arkin
