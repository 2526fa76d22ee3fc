#include "arkin/desktop/pictures/PictureDiff.h"

#include <cstdlib>
#include <QPainter>

namespace zn::arkin {

namespace {

constexpr QRgb onlyBefore = qRgb(200, 40, 40);
constexpr QRgb onlyAfter = qRgb(30, 140, 60);
constexpr QRgb other = qRgb(225, 150, 20);

QImage inMiddle(const QImage& picture, const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.drawImage((size.width() - picture.width()) / 2, (size.height() - picture.height()) / 2, picture);
    return image;
}

/// Neither the paper nor the background of a model.
bool isDrawn(QRgb pixel)
{
    constexpr int paper = 245, faint = 40;
    return qAlpha(pixel) > faint && qGray(pixel) < paper;
}

QRgb diffOf(QRgb before, QRgb after)
{
    constexpr int noise = 30; // of edges that are smoothed
    const bool first = isDrawn(before), second = isDrawn(after);
    if (first != second)
        return first ? onlyBefore : onlyAfter;
    if (!first)
        return qRgba(0, 0, 0, 0);
    const int change = std::abs(qRed(before) - qRed(after)) + std::abs(qGreen(before) - qGreen(after))
        + std::abs(qBlue(before) - qBlue(after));
    if (change > noise)
        return other;
    const int pale = 190 + qGray(after) / 5;
    return qRgb(pale, pale, pale);
}

} // namespace

QImage pictureDiff(const QImage& before, const QImage& after)
{
    const QSize size = before.size().expandedTo(after.size());
    const QImage first = inMiddle(before, size), second = inMiddle(after, size);
    QImage diff(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            diff.setPixel(x, y, diffOf(first.pixel(x, y), second.pixel(x, y)));
    return diff;
}

} // namespace zn::arkin
