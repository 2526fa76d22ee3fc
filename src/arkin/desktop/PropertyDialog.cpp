#include "arkin/desktop/PropertyDialog.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/HostPage.h"
#include "arkin/tasks/TaskSetup.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

/// The list of titles is as wide as its longest one.
class TitleList : public QListWidget {
public:
    using QListWidget::QListWidget;
    QSize sizeHint() const override
    {
        const int gap = 4 * fontMetrics().averageCharWidth();
        return {sizeHintForColumn(0) + 2 * (frameWidth() + spacing()) + gap, QListWidget::minimumSizeHint().height()};
    }
};

QLabel* makeHeading(QWidget* parent)
{
    auto* const heading = new QLabel(parent);
    auto font = heading->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.2);
    heading->setFont(font);
    heading->setObjectName("heading");
    return heading;
}

} // namespace

PropertyDialog::PropertyDialog(TaskSetup& setup)
    : PageDialog(nullptr, [this](int step) { turnBy(step); })
    , m_setup(setup)
    , m_titles(new TitleList(this))
    , m_heading(makeHeading(this))
    , m_stack(new QStackedWidget(this))
{
    setWindowTitle(own("Properties of the Task “%1”").arg(shown(setup.task().name)));
    setObjectName("taskProperties");
    m_titles->setObjectName("pageTitles");
    m_titles->setAccessibleName(own("Pages"));
    m_titles->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    m_titles->setSpacing(fontMetrics().height() / 4);
    m_titles->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const right = new QVBoxLayout;
    right->addWidget(m_heading);
    right->addWidget(m_stack, 1);
    auto* const row = new QHBoxLayout;
    row->addWidget(m_titles);
    row->addSpacing(fontMetrics().averageCharWidth());
    row->addLayout(right, 1);
    content().addLayout(row);
    buttons().setStandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons().button(QDialogButtonBox::Ok)->setDefault(true);
    connect(&buttons(), &QDialogButtonBox::accepted, this, &PropertyDialog::accept);
    connect(&buttons(), &QDialogButtonBox::rejected, this, &PropertyDialog::reject);
    connect(m_titles, &QListWidget::currentRowChanged, this, [this](int index) { turnTo(index); });
    try {
        makePages();
    } catch (...) {
        m_setup.close();
        throw;
    }
}

PropertyDialog::~PropertyDialog() { m_setup.close(); }

void PropertyDialog::makePages()
{
    m_setup.open(handle());
    const QSignalBlocker quiet(m_titles);
    for (const auto& page : m_setup.pages())
        addArea(makeArea(page.title, page.window));
    m_hostPage = new HostPage(m_setup.task());
    addArea(makeArea(typed(own("Limits and Notices")), zn::handleOf(*m_hostPage)));
    orderTabs(m_titles);
    bringToFront(0);
    m_areas.front()->takeFocus();
}

void PropertyDialog::addArea(PageArea* area)
{
    m_areas.push_back(area);
    m_stack->addWidget(area);
    m_titles->addItem(shown(area->title()));
}

int PropertyDialog::current() const { return m_stack->currentIndex(); }

void PropertyDialog::turnTo(int index)
{
    inSlot(this, [&] {
        if (index < 0 || index == current())
            return;
        if (m_areas[static_cast<std::size_t>(current())]->mayLeave())
            return bringToFront(index);
        // The list is still in the middle of its change.
        QMetaObject::invokeMethod(
            this, [this] { bringToFront(current()); }, Qt::QueuedConnection);
    });
}

void PropertyDialog::bringToFront(int index)
{
    const QSignalBlocker quiet(m_titles);
    m_titles->setCurrentRow(index);
    m_stack->setCurrentIndex(index);
    m_heading->setText(shown(m_areas[static_cast<std::size_t>(index)]->title()));
}

void PropertyDialog::turnBy(int step)
{
    const int count = static_cast<int>(m_areas.size());
    turnTo((current() + count + step) % count);
}

void PropertyDialog::showRefusing(const zn::Text& title)
{
    for (std::size_t i = 0; i < m_areas.size(); ++i) {
        if (m_areas[i]->title() != title)
            continue;
        bringToFront(static_cast<int>(i));
        return m_areas[i]->takeFocus();
    }
    tell(this, title.empty() ? own("The add-in doesn't accept the settings.") : shown(title));
}

bool PropertyDialog::replaces(const TaskConflict& conflict)
{
    const auto who = conflict.user.empty() ? own("Somebody else") : shown(conflict.user);
    const auto when = QLocale().toString(QDateTime::fromSecsSinceEpoch(conflict.at), QLocale::ShortFormat);
    QMessageBox box(QMessageBox::Warning, windowTitle(),
        own("%1 has changed this task on %2, while it was open here. Do you want to replace those settings with yours?")
            .arg(who, when),
        QMessageBox::NoButton, this);
    box.setTextFormat(Qt::PlainText);
    auto* const replace = box.addButton(own("&Replace"), QMessageBox::AcceptRole);
    box.setDefaultButton(box.addButton(QMessageBox::Cancel));
    box.exec();
    return box.clickedButton() == replace;
}

bool PropertyDialog::storeOrAsk()
{
    const auto conflict = m_setup.store(false);
    if (!conflict)
        return true;
    if (!replaces(*conflict))
        return false;
    m_setup.store(true);
    return true;
}

bool PropertyDialog::acceptsHostPage()
{
    const int before = current();
    bringToFront(static_cast<int>(m_areas.size()) - 1);
    if (!m_hostPage->validate())
        return false;
    bringToFront(before);
    return true;
}

void PropertyDialog::accept()
{
    inSlot(this, [&] {
        if (!m_areas[static_cast<std::size_t>(current())]->mayLeave())
            return;
        if (!acceptsHostPage())
            return;
        if (const auto refusing = m_setup.accept())
            return showRefusing(*refusing);
        m_setup.setHostSettings(m_hostPage->settings());
        if (storeOrAsk())
            PageDialog::accept();
    });
}

void PropertyDialog::reject()
{
    inSlot(this, [&] { m_setup.cancel(); });
    PageDialog::reject();
}

} // namespace zn::arkin
