#include "addin/pages/conversion/ViewPicker.h"

#include "addin/pages/frame/Images.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QToolButton>

namespace zn {

const std::array<PrimaryView, primaryViewCount> primaryViews{{
    {16, "viewTop", u"Top view", 0, 1, 229, 243},
    {4, "viewFront", u"Front view", 1, 1, 225, 239},
    {32, "viewBottom", u"Bottom view", 2, 1, 223, 237},
    {128, "viewRight", u"Right view", 1, 2, 228, 242},
    {256, "viewIsometric", u"Isometric view", 0, 2, 226, 240},
    {512, "viewDimetric", u"Dimetric view", 0, 3, 224, 238},
    {1024, "viewTrimetric", u"Trimetric view", 0, 4, 230, 244},
    {64, "viewLeft", u"Left view", 1, 0, 227, 241},
    {8, "viewBack", u"Back view", 1, 3, 222, 236},
}};

namespace {

constexpr int pictureSize = 32;
constexpr int mostSteps = 5; ///< columns of the cross

struct Step {
    int key;
    int rows;
    int columns;
};
constexpr Step steps[] = {
    {Qt::Key_Left, 0, -1},
    {Qt::Key_Right, 0, 1},
    {Qt::Key_Up, -1, 0},
    {Qt::Key_Down, 1, 0},
};

} // namespace

ViewPicker::ViewPicker(QWidget* parent)
    : QWidget(parent)
{
    auto* cross = new QGridLayout(this);
    cross->setContentsMargins(0, 0, 0, 0);
    cross->setSpacing(2);
    for (std::size_t row = 0; row < primaryViewCount; ++row) {
        const PrimaryView& view = primaryViews[row];
        auto* made = new QToolButton(this);
        made->setCheckable(true);
        made->setIconSize({pictureSize, pictureSize});
        made->installEventFilter(this);
        connect(made, &QToolButton::clicked, this, [this, bit = view.bit] { choose(m_chosen ^ bit); });
        cross->addWidget(made, view.row, view.column);
        m_buttons[row] = made;
    }
    cross->setColumnStretch(mostSteps, 1);
    makeTabStop(*m_buttons[1]);
    showChosen();
}

void ViewPicker::choose(std::int32_t bits)
{
    m_chosen = bits;
    showChosen();
}

void ViewPicker::showChosen()
{
    for (std::size_t row = 0; row < primaryViewCount; ++row) {
        const PrimaryView& view = primaryViews[row];
        const bool isOn = m_chosen & view.bit;
        m_buttons[row]->setChecked(isOn);
        m_buttons[row]->setIcon(image(isOn ? view.onImage : view.offImage));
    }
}

bool ViewPicker::eventFilter(QObject* watched, QEvent* event)
{
    auto* from = qobject_cast<QToolButton*>(watched);
    if (from && event->type() == QEvent::FocusIn)
        makeTabStop(*from);
    if (from && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        for (const Step& step : steps) {
            if (step.key != key)
                continue;
            moveFocus(*from, step.rows, isRightToLeft() ? -step.columns : step.columns);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

/// To the next button in that direction; gaps of the cross are passed over.
void ViewPicker::moveFocus(const QToolButton& from, int rows, int columns)
{
    const auto* cross = static_cast<const QGridLayout*>(layout());
    int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
    cross->getItemPosition(cross->indexOf(&from), &row, &column, &rowSpan, &columnSpan);
    for (int i = 0; i < mostSteps; ++i) {
        row += rows;
        column += columns;
        const QLayoutItem* item = row < 0 || column < 0 ? nullptr : cross->itemAtPosition(row, column);
        if (item && item->widget())
            return item->widget()->setFocus(Qt::OtherFocusReason);
    }
}

void ViewPicker::makeTabStop(const QToolButton& stop)
{
    for (QToolButton* made : m_buttons)
        made->setFocusPolicy(made == &stop ? Qt::StrongFocus : Qt::ClickFocus);
}

} // namespace zn
