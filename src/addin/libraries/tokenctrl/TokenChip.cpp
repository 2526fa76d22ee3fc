#include "addin/libraries/tokenctrl/TokenChip.h"

#include "addin/libraries/tokenctrl/TokenPatterns.h"

#include <algorithm>
#include <cmath>
#include <QFontMetricsF>
#include <QPainter>
#include <QWidget>
#include <utility>

namespace tokenctrl {

namespace {

constexpr int tokenObject = QTextFormat::UserObject + 1;
constexpr int patternProperty = QTextFormat::UserProperty + 1;

/// What lies around the text of a chip, in parts of the font's height.
constexpr qreal sidePadding = 0.35;
constexpr qreal gap = 0.1; ///< between two chips
constexpr qreal edgePadding = 0.06;
constexpr qreal cornerRadius = 0.25;

/// Above and below the text, inside the chip.
qreal padding(const QFontMetricsF& font) { return std::max(1.0, std::round(font.height() * edgePadding)); }

QColor mixed(const QColor& ground, const QColor& colour, qreal part)
{
    const auto mix = [part](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * part)); };
    return {mix(ground.red(), colour.red()), mix(ground.green(), colour.green()), mix(ground.blue(), colour.blue())};
}

struct ChipColours {
    QColor plate;
    QColor edge;
    QColor text;
};

ChipColours chipColours(const QPalette& palette, bool isVariable, bool isSelected)
{
    const QColor ground = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    // The second colour has the highlight's strength in another hue: amber beside the usual blue.
    const QColor accent = isVariable ? QColor::fromHsl(38, 200, 120) : palette.color(QPalette::Highlight);
    if (isSelected)
        return {palette.color(QPalette::Highlight), palette.color(QPalette::HighlightedText),
            palette.color(QPalette::HighlightedText)};
    return {mixed(ground, accent, 0.22), mixed(ground, accent, 0.7), text};
}

} // namespace

QTextCharFormat tokenFormat(const QString& pattern)
{
    QTextCharFormat format;
    format.setObjectType(tokenObject);
    format.setProperty(patternProperty, pattern);
    return format;
}

QString tokenPattern(const QTextCharFormat& format)
{
    return format.objectType() == tokenObject ? format.stringProperty(patternProperty) : QString();
}

TokenChip::TokenChip(const QWidget& edit, const TokenPatterns& patterns)
    : m_edit(edit)
    , m_patterns(patterns)
{
}

QString TokenChip::label(const QTextFormat& format) const
{
    const QString pattern = format.stringProperty(patternProperty);
    const auto known = m_patterns.find(pattern);
    return known && !known->displayText.isEmpty() ? known->displayText : pattern;
}

bool TokenChip::isVariable(const QTextFormat& format) const
{
    const auto known = m_patterns.find(format.stringProperty(patternProperty));
    return known && known->isVariable;
}

LineBox TokenChip::lineBox() const
{
    const QFontMetricsF font(m_edit.font());
    // A line of a fixed height has its baseline at four fifths.
    const qreal above = font.ascent() + padding(font);
    const qreal below = font.descent() + padding(font);
    const qreal height = std::ceil(std::max(above * 5 / 4, below * 5));
    return {height, height * 4 / 5 - above, height / 5 - below};
}

QSizeF TokenChip::intrinsicSize(QTextDocument*, int, const QTextFormat& format)
{
    const QFontMetricsF font(m_edit.font());
    const qreal width = font.horizontalAdvance(label(format)) + 2 * font.height() * (sidePadding + gap);
    return {std::ceil(width), font.ascent() + padding(font)}; // an object stands on the baseline
}

void TokenChip::drawObject(QPainter* painter, const QRectF& rect, QTextDocument*, int, const QTextFormat& format)
{
    if (format.hasProperty(QTextFormat::BackgroundBrush))
        m_selected.push_back({painter->transform().mapRect(rect), format});
    else
        draw(*painter, rect, format, false);
}

void TokenChip::drawSelected(QPainter& painter)
{
    for (const auto& [rect, format] : std::exchange(m_selected, {}))
        draw(painter, rect, format, true);
}

void TokenChip::draw(QPainter& painter, const QRectF& rect, const QTextFormat& format, bool isSelected) const
{
    const QFontMetricsF font(m_edit.font());
    const ChipColours colours = chipColours(m_edit.palette(), isVariable(format), isSelected);

    const qreal baseline = rect.bottom();
    const QRectF plate(rect.left() + font.height() * gap, rect.top(), rect.width() - 2 * font.height() * gap,
        rect.height() + font.descent() + padding(font));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours.edge, 1));
    painter.setBrush(colours.plate);
    const qreal radius = font.height() * cornerRadius;
    painter.drawRoundedRect(plate.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.setFont(m_edit.font());
    painter.setPen(colours.text);
    painter.drawText(QPointF(plate.left() + font.height() * sidePadding, baseline), label(format));
    painter.restore();
}

} // namespace tokenctrl
