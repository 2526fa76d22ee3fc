#include "addin/pages/options/OptionWindow.h"

#include <QStyle>
#include <QVBoxLayout>

namespace zn {

QVBoxLayout* OptionWindow::rows()
{
    if (auto* made = static_cast<QVBoxLayout*>(layout()))
        return made;
    auto* made = new QVBoxLayout(this);
    made->setContentsMargins({});
    made->setAlignment(Qt::AlignTop);
    return made;
}

void OptionWindow::placeRows(std::initializer_list<QWidget*> controls)
{
    for (QWidget* control : controls)
        rows()->addWidget(control);
}

void OptionWindow::placeIndented(QWidget* control, int levels)
{
    auto* row = new QHBoxLayout;
    row->addSpacing(levels * indent());
    row->addWidget(control);
    rows()->addLayout(row);
}

int OptionWindow::indent() const
{
    return style()->pixelMetric(QStyle::PM_IndicatorWidth) + style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
}

} // namespace zn
