#include "addin/pages/conversion/ExampleLine.h"

#include <QPainter>

namespace zn {

namespace {

constexpr int wrapping = Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere;
constexpr int narrowestInCharacters = 20;

} // namespace

ExampleLine::ExampleLine(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

QSize ExampleLine::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * narrowestInCharacters, fontMetrics().height()};
}

QSize ExampleLine::sizeHint() const { return minimumSizeHint(); }

int ExampleLine::heightForWidth(int width) const
{
    constexpr int unlimited = 1 << 20;
    return qMax(fontMetrics().height(), fontMetrics().boundingRect(0, 0, width, unlimited, wrapping, text()).height());
}

void ExampleLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.drawText(contentsRect(), wrapping, text());
}

} // namespace zn
