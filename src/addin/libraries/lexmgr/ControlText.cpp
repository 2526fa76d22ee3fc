#include "addin/libraries/lexmgr/ControlText.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>

namespace lexmgr {

namespace {

bool holds(const QLayout& layout, const QWidget& control)
{
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem* item = layout.itemAt(i);
        if (item->widget() == &control || (item->layout() && holds(*item->layout(), control)))
            return true;
    }
    return false;
}

} // namespace

void setControlText(QWidget& control, const QString& text)
{
    if (auto* label = qobject_cast<QLabel*>(&control))
        label->setText(text);
    else if (auto* button = qobject_cast<QAbstractButton*>(&control))
        button->setText(text);
    else if (auto* box = qobject_cast<QGroupBox*>(&control))
        box->setTitle(text);
    else
        control.setAccessibleName(text);
}

bool isPlacedByLayout(const QWidget& control)
{
    const QWidget* parent = control.parentWidget();
    return parent && parent->layout() && holds(*parent->layout(), control);
}

} // namespace lexmgr
