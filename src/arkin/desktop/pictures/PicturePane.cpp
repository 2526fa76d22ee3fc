#include "arkin/desktop/pictures/PicturePane.h"

#include "arkin/desktop/frame/Texts.h"

#include <algorithm>
#include <cmath>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

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
    forgetModel();
    m_picture = picture;
    m_sentence.clear();
    setAccessibleDescription({});
    update();
    if (underMouse() || hasFocus())
        askForModel();
}

void PicturePane::tell(const QString& sentence)
{
    forgetModel();
    m_picture = {};
    m_sentence = sentence;
    setAccessibleDescription(sentence);
    update();
}

void PicturePane::setModel(TurningModel model)
{
    m_model = std::move(model);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::OpenHandCursor);
    const QString how = own("Drag to turn, wheel to zoom, double click to go back.");
    setToolTip(how);
    setAccessibleDescription(how);
}

void PicturePane::forgetModel()
{
    m_model.reset();
    m_asked = false;
    m_turned = {};
    setFocusPolicy(modelWanted ? Qt::StrongFocus : Qt::NoFocus);
    unsetCursor();
    setToolTip({});
}

void PicturePane::askForModel()
{
    if (m_asked || m_picture.isNull() || !modelWanted)
        return;
    m_asked = true;
    inSlot(this, modelWanted);
}

void PicturePane::enterEvent(QEnterEvent* event)
{
    QWidget::enterEvent(event);
    askForModel();
}

void PicturePane::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    askForModel();
}

void PicturePane::draw(bool fine)
{
    constexpr int largest = 1024; // pixels, so that turning stays fluent
    const QSize room = (QSizeF(size()) * devicePixelRatioF()).toSize().boundedTo({largest, largest});
    if (!room.isEmpty())
        m_turned = m_model->picture(m_look, m_zoom, room, fine);
    update();
}

void PicturePane::turn(double aside, double over, bool fine)
{
    if (!m_model)
        return;
    if (m_turned.isNull()) {
        m_look = TurningModel::firstLook();
        m_zoom = 1.0;
    }
    m_look = QQuaternion::fromAxisAndAngle(0, 1, 0, static_cast<float>(aside))
        * QQuaternion::fromAxisAndAngle(1, 0, 0, static_cast<float>(over)) * m_look;
    m_look.normalize();
    draw(fine);
}

void PicturePane::zoom(double factor)
{
    turn(0, 0, false);
    m_zoom = std::clamp(m_zoom * factor, 0.2, 20.0);
    turn(0, 0, true);
}

void PicturePane::showFirst()
{
    m_turned = {};
    update();
}

void PicturePane::mousePressEvent(QMouseEvent* event)
{
    m_dragged = event->position().toPoint();
    if (m_model)
        setCursor(Qt::ClosedHandCursor);
}

void PicturePane::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_model || !(event->buttons() & Qt::LeftButton))
        return;
    const QPoint now = event->position().toPoint();
    const double degreesPerPixel = 240.0 / std::max(1, std::min(width(), height()));
    turn((now.x() - m_dragged.x()) * degreesPerPixel, (now.y() - m_dragged.y()) * degreesPerPixel, false);
    m_dragged = now;
}

void PicturePane::mouseReleaseEvent(QMouseEvent*)
{
    if (!m_model)
        return;
    setCursor(Qt::OpenHandCursor);
    if (!m_turned.isNull())
        draw(true);
}

void PicturePane::mouseDoubleClickEvent(QMouseEvent*) { showFirst(); }

void PicturePane::wheelEvent(QWheelEvent* event)
{
    if (m_model)
        zoom(std::pow(1.2, event->angleDelta().y() / 120.0));
    event->setAccepted(m_model.has_value());
}

void PicturePane::keyPressEvent(QKeyEvent* event)
{
    constexpr double step = 15.0; // degrees
    switch (event->key()) {
    case Qt::Key_Left:
        return turn(-step, 0, true);
    case Qt::Key_Right:
        return turn(step, 0, true);
    case Qt::Key_Up:
        return turn(0, -step, true);
    case Qt::Key_Down:
        return turn(0, step, true);
    case Qt::Key_Plus:
        return zoom(1.2);
    case Qt::Key_Minus:
        return zoom(1 / 1.2);
    case Qt::Key_Home:
        return showFirst();
    default:
        QWidget::keyPressEvent(event);
    }
}

void PicturePane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (!m_turned.isNull())
        draw(true);
}

void PicturePane::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    if (picture().isNull()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, m_sentence);
        return;
    }
    // Never larger than it was made, in the pixels of the screen.
    const qreal ratio = devicePixelRatioF();
    const QSize most = picture().size().boundedTo(size() * ratio);
    QImage fitting = picture().scaled(most, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    fitting.setDevicePixelRatio(ratio);
    const QSizeF drawn = fitting.deviceIndependentSize();
    painter.drawImage(QPointF((width() - drawn.width()) / 2, (height() - drawn.height()) / 2), fitting);
}

} // namespace zn::arkin
