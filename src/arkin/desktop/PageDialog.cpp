#include "arkin/desktop/PageDialog.h"

#include "contracts/host/PageMessage.h"
#include "qtglue/TabOrder.h"

#include <QDialogButtonBox>
#include <QResizeEvent>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

/// What a window's frame, and a panel beside it, may take of the screen.
constexpr int screenReserve = 64;

bool isOnPage(const QWidget* control)
{
    while (control && !dynamic_cast<const PageArea*>(control))
        control = control->parentWidget();
    return control != nullptr;
}

} // namespace

PageDialog::PageDialog(QWidget* parent, zn::TurnPages turn)
    : QDialog(parent)
    , m_content(new QVBoxLayout)
    , m_buttons(new QDialogButtonBox(this))
{
    auto* const whole = new QVBoxLayout(this);
    whole->addLayout(m_content, 1);
    whole->addWidget(m_buttons);
    m_buttons->setObjectName("buttons");
    setSizeGripEnabled(true);
    zn::keepInputForPages(*this, std::move(turn));
}

PageArea* PageDialog::makeArea(const zn::Text& title, std::int32_t window)
{
    auto* const area = new PageArea(title, window, this);
    area->onResized([this] { fit(); });
    return area;
}

void PageDialog::orderTabs(const QWidget* first)
{
    zn::tabFirstTo(*this, [first](const QWidget& control) { return &control == first || isOnPage(&control); });
}

void PageDialog::fit()
{
    if (m_fitting)
        return;
    m_fitting = true;
    // After the pages have been laid out anew: several of them may change at once.
    QTimer::singleShot(0, this, [this] {
        m_fitting = false;
        fitNow();
    });
}

void PageDialog::fitNow()
{
    layout()->activate();
    const auto room = screen()->availableGeometry().size() - QSize(screenReserve, screenReserve);
    const auto wanted = layout()->totalSizeHint().boundedTo(room);
    // A size that the user gave is kept, but for what doesn't fit in.
    const bool byUser = m_fitted.isValid() && size() != m_fitted;
    resize(byUser ? size().expandedTo(wanted) : wanted);
}

void PageDialog::resizeEvent(QResizeEvent* event)
{
    // What comes from the window system without having been asked for is the user's.
    if (!event->spontaneous())
        m_fitted = event->size();
    QDialog::resizeEvent(event);
}

void PageDialog::showEvent(QShowEvent* event)
{
    fitNow();
    QDialog::showEvent(event);
}

bool PageDialog::event(QEvent* event)
{
    if (event->type() != zn::PageMessage::typeOf(zn::pageFormatChangedMessage))
        return QDialog::event(event);
    fit();
    return true;
}

} // namespace zn::arkin
