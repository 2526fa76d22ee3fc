#include "arkin/desktop/pictures/PicturePane.h"

#include "arkin/desktop/frame/Texts.h"

#include <QPainter>

namespace zn::arkin {

PicturePane::PicturePane(QWidget* parent)
    : QWidget(parent)
{
    setObjectName("picture");
    setAccessibleName(own("Picture"));
}

QSize PicturePane::sizeHint() const
{
    const int side = 14 * fontMetrics().lineSpacing();
    return {side, side};
}

void PicturePane::show(const QImage& picture)
{
    m_picture = picture;
    m_sentence.clear();
    setAccessibleDescription({});
    update();
}

void PicturePane::tell(const QString& sentence)
{
    m_picture = {};
    m_sentence = sentence;
    setAccessibleDescription(sentence);
    update();
}

void PicturePane::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_picture.isNull()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, m_sentence);
        return;
    }
    // Never larger than it was made, in the pixels of the screen.
    const qreal ratio = devicePixelRatioF();
    const QSize most = m_picture.size().boundedTo(size() * ratio);
    QImage fitting = m_picture.scaled(most, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    fitting.setDevicePixelRatio(ratio);
    const QSizeF drawn = fitting.deviceIndependentSize();
    painter.drawImage(QPointF((width() - drawn.width()) / 2, (height() - drawn.height()) / 2), fitting);
}

} // namespace zn::arkin
