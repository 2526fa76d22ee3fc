#include "addin/libraries/tokenctrl/TokenEdit.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <utility>

/// How high the edit is; what is done in it stands in TokenEdit.cpp.
namespace tokenctrl {

namespace {

constexpr int mostLines = 4;
constexpr int narrowestInCharacters = 12;
constexpr qreal margin = 3; ///< around the chips

/// What is left of the margin where the line has free room itself.
qreal marginBeside(qreal freeRoom) { return std::max(0.0, margin - freeRoom); }

} // namespace

void TokenEdit::layOut()
{
    const LineBox line = m_chip.lineBox();
    setUndoRedoEnabled(false);
    QTextBlockFormat lines;
    lines.setLineHeight(line.height, QTextBlockFormat::FixedHeight);
    QTextCursor(document()).setBlockFormat(lines);
    QTextFrameFormat frame = document()->rootFrame()->frameFormat();
    frame.setMargin(margin);
    frame.setTopMargin(marginBeside(line.freeAbove));
    frame.setBottomMargin(marginBeside(line.freeBelow));
    document()->rootFrame()->setFrameFormat(frame);
    setUndoRedoEnabled(true);
    // The chips are measured with the font, which the document doesn't know of.
    document()->markContentsDirty(0, document()->characterCount());
    updateHeight();
}

int TokenEdit::heightFor(int lines) const
{
    const LineBox line = m_chip.lineBox();
    return static_cast<int>(
        std::ceil(line.height * lines + marginBeside(line.freeAbove) + marginBeside(line.freeBelow)));
}

void TokenEdit::updateHeight()
{
    const qreal height = document()->size().height();
    setVerticalScrollBarPolicy(height > heightFor(mostLines) ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    const int wanted = boxHeight(height);
    if (std::exchange(m_height, wanted) != wanted)
        updateGeometry();
}

int TokenEdit::boxHeight(qreal textHeight) const
{
    const int bounded = std::clamp(static_cast<int>(std::ceil(textHeight)), heightFor(1), heightFor(mostLines));
    return bounded + 2 * frameWidth();
}

int TokenEdit::heightForWidth(int width) const
{
    // Asked before the edit has that width, so a copy of the text is laid out in it.
    const std::unique_ptr<QTextDocument> copy(document()->clone());
    copy->documentLayout()->registerHandler(tokenFormat(QString()).objectType(), const_cast<TokenChip*>(&m_chip));
    copy->setDefaultFont(document()->defaultFont());
    copy->setDefaultTextOption(document()->defaultTextOption());
    copy->documentLayout()->setPaintDevice(viewport());
    copy->setTextWidth(width - 2 * frameWidth());
    return boxHeight(copy->size().height());
}

QSize TokenEdit::sizeHint() const { return {minimumSizeHint().width() * 3, m_height}; }

QSize TokenEdit::minimumSizeHint() const
{
    // The height that a text needs depends on the width; layouts ask for it by `heightForWidth`.
    return {fontMetrics().averageCharWidth() * narrowestInCharacters + 2 * frameWidth(), boxHeight(0)};
}

} // namespace tokenctrl
