#include "arkin/reftree/FileTypeIcons.h"

#include <QApplication>
#include <QHash>
#include <QPainter>
#include <QPolygonF>
#include <QStyle>

namespace zn::arkin {

namespace {

// All drawn on a field of 16 by 16, in colours that stand on light and on dark ground.

void paintBlock(QPainter& painter, QPointF at, qreal edge, const QColor& colour)
{
    const qreal half = edge / 2, quarter = edge / 4;
    const QPointF top(at.x() + half, at.y()), right(at.x() + edge, at.y() + quarter),
        middle(at.x() + half, at.y() + half), left(at.x(), at.y() + quarter);
    const QPointF down(0, half);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour.lighter(130));
    painter.drawPolygon(QPolygonF({top, right, middle, left}));
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF({left, middle, middle + down, left + down}));
    painter.setBrush(colour.darker(130));
    painter.drawPolygon(QPolygonF({middle, right, right + down, middle + down}));
}

void paintPart(QPainter& painter) { paintBlock(painter, {1, 1}, 14, QColor(0x5b, 0x8f, 0xc7)); }

void paintAssembly(QPainter& painter)
{
    paintBlock(painter, {4, 0}, 8, QColor(0xd6, 0xa0, 0x3d));
    paintBlock(painter, {0, 7}, 8, QColor(0x5b, 0x8f, 0xc7));
    paintBlock(painter, {8, 7}, 8, QColor(0x6a, 0xab, 0x73));
}

void paintDrawing(QPainter& painter)
{
    painter.setPen(QPen(QColor(0x80, 0x80, 0x80), 1));
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(0.5, 2.5, 15, 11));
    painter.setPen(QPen(QColor(0x5b, 0x8f, 0xc7), 1));
    painter.drawRect(QRectF(2.5, 4.5, 5, 4));
    painter.drawEllipse(QRectF(9.5, 4.5, 4, 4));
    painter.setPen(QPen(QColor(0x80, 0x80, 0x80), 1));
    painter.drawLine(QPointF(9, 11.5), QPointF(14, 11.5));
}

constexpr struct {
    const char* extension;
    void (*paint)(QPainter&);
} painters[] = {
    {".zenprt", paintPart},
    {".zenasm", paintAssembly},
    {".asm", paintAssembly},
    {".zendrw", paintDrawing},
    {".drw", paintDrawing},
};

QIcon paintedIcon(void (*paint)(QPainter&))
{
    QIcon icon;
    for (const int edge : {16, 24, 32, 48, 64}) {
        QPixmap pixmap(edge, edge);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(edge / 16.0, edge / 16.0);
        paint(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

QIcon makeIcon(const QString& extension)
{
    for (const auto& row : painters) {
        if (extension == QLatin1String(row.extension))
            return paintedIcon(row.paint);
    }
    return QApplication::style()->standardIcon(QStyle::SP_FileIcon);
}

} // namespace

QIcon FileTypeIcons::of(const QString& extension)
{
    const QString key = extension.toLower();
    const auto known = m_icons.constFind(key);
    return known != m_icons.constEnd() ? *known : *m_icons.insert(key, makeIcon(key));
}

} // namespace zn::arkin
