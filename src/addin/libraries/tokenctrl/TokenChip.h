#pragma once

#include <QObject>
#include <QTextCharFormat>
#include <QTextObjectInterface>
#include <vector>

class QWidget;

namespace tokenctrl {

class TokenPatterns;

/// The format with which a token stands in a document, as one object replacement character.
QTextCharFormat tokenFormat(const QString& pattern);
/// The pattern of a token's format; empty for text that is no token.
QString tokenPattern(const QTextCharFormat& format);

/// A line in pixels, with what stays free above and below its chips.
struct LineBox {
    qreal height = 0;
    qreal freeAbove = 0;
    qreal freeBelow = 0;
};

/// Draws a token: its display text on a rounded plate, in two colours for the two sorts of patterns. The colours are
/// mixed from the palette, so that they suit light and dark ones.
class TokenChip : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
public:
    /// Takes font and palette from the edit. Both must outlive the chip.
    TokenChip(const QWidget& edit, const TokenPatterns& patterns);

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* document, int position,
        const QTextFormat& format) override;

    /// Draws the chips that the last drawing of the document found selected. The document veils selected objects, which
    /// would make their text hard to read, so they are drawn behind it, in the viewport's coordinates.
    void drawSelected(QPainter& painter);

    /// The height that lines must have so that chips fit, the same for lines without any.
    LineBox lineBox() const;

private:
    void draw(QPainter& painter, const QRectF& rect, const QTextFormat& format, bool isSelected) const;
    QString label(const QTextFormat& format) const;
    bool isVariable(const QTextFormat& format) const;

    const QWidget& m_edit;
    const TokenPatterns& m_patterns;
    std::vector<std::pair<QRectF, QTextFormat>> m_selected;
};

} // namespace tokenctrl
