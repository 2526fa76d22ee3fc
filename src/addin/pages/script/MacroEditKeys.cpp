#include "addin/pages/script/MacroEdit.h"

#include "qtglue/Texts.h"

#include <algorithm>
#include <QKeyEvent>
#include <QTextBlock>

namespace zn {

namespace {

/// Number of the blanks with which a line begins.
int indentationOf(const QString& line)
{
    const auto* end = std::find_if(line.begin(), line.end(), [](QChar unit) { return unit != u' ' && unit != u'\t'; });
    return static_cast<int>(end - line.begin());
}

/// Visits the lines that the caret's selection touches, as one step that can be undone. A selection that ends at the
/// beginning of a line leaves that line out.
template <class Work> void onSelectedLines(QTextCursor caret, Work&& work)
{
    QTextDocument* document = caret.document();
    const int first = document->findBlock(caret.selectionStart()).blockNumber();
    const QTextBlock end = document->findBlock(caret.selectionEnd());
    int last = end.blockNumber();
    if (last > first && caret.selectionEnd() == end.position())
        --last;
    caret.beginEditBlock();
    for (int i = first; i <= last; ++i)
        work(QTextCursor(document->findBlockByNumber(i)));
    caret.endEditBlock();
}

} // namespace

void MacroEdit::keyPressEvent(QKeyEvent* event)
{
    if (isReadOnly() || !handleKey(event->key(), event->modifiers()))
        QPlainTextEdit::keyPressEvent(event);
}

bool MacroEdit::handleKey(int key, Qt::KeyboardModifiers modifiers)
{
    const bool control = modifiers.testFlag(Qt::ControlModifier);
    const bool shift = modifiers.testFlag(Qt::ShiftModifier);
    switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (control)
            // NOLINTNEXTLINE(bugprone-parent-virtual-call): the text field's own keeps Tab to itself
            QWidget::focusNextPrevChild(key == Qt::Key_Tab && !shift);
        else if (key == Qt::Key_Backtab || shift)
            unindentLines();
        else
            indent();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (control)
            return false;
        newLine();
        return true;
    case Qt::Key_Backspace:
        return modifiers == Qt::NoModifier && deleteIndentation();
    default:
        return false;
    }
}

void MacroEdit::newLine()
{
    QTextCursor caret = textCursor();
    caret.beginEditBlock();
    caret.removeSelectedText();
    setTextCursor(caret);
    alignClosingWord();
    caret = textCursor();
    const QString before = caret.block().text().left(caret.positionInBlock());
    const int indentation = indentationOf(before);
    const bool opens = opensBlock(typed(before));
    caret.insertText(QLatin1Char('\n') + before.left(indentation) + QString(opens ? indentWidth : 0, QLatin1Char(' ')));
    caret.endEditBlock();
    setTextCursor(caret);
    ensureCursorVisible();
}

void MacroEdit::alignClosingWord()
{
    const QTextBlock line = textCursor().block();
    const int indentation = indentationOf(line.text());
    const auto place = static_cast<std::size_t>(line.position()) + static_cast<std::size_t>(indentation);
    const std::vector<MacroBlock> blocks = macroBlocks(plainText());
    const auto isDivided = [place](const MacroBlock& block) {
        return std::any_of(block.words.begin() + 1, block.words.end(),
            [place](const SourceRange& word) { return word.position == place; });
    };
    const auto block = std::find_if(blocks.begin(), blocks.end(), isDivided);
    if (block == blocks.end())
        return;
    const QTextBlock opening = document()->findBlock(static_cast<int>(block->words.front().position));
    const int wanted = indentationOf(opening.text());
    if (indentation <= wanted)
        return;
    QTextCursor blanks(line);
    blanks.setPosition(line.position() + indentation, QTextCursor::KeepAnchor);
    blanks.insertText(opening.text().left(wanted));
}

void MacroEdit::indent()
{
    QTextCursor caret = textCursor();
    if (caret.selectedText().contains(QChar::ParagraphSeparator)) {
        onSelectedLines(caret, [](QTextCursor line) { line.insertText(QString(indentWidth, QLatin1Char(' '))); });
        return;
    }
    const int column = std::min(caret.selectionStart(), caret.selectionEnd()) - caret.block().position();
    caret.insertText(QString(indentWidth - std::max(column, 0) % indentWidth, QLatin1Char(' ')));
    ensureCursorVisible();
}

void MacroEdit::unindentLines()
{
    onSelectedLines(textCursor(), [](QTextCursor line) {
        const QString text = line.block().text();
        const int width = text.startsWith(QLatin1Char('\t')) ? 1 : std::min(indentationOf(text), indentWidth);
        line.setPosition(line.position() + width, QTextCursor::KeepAnchor);
        line.removeSelectedText();
    });
}

/// Back to the step before, where only blanks stand before the caret.
bool MacroEdit::deleteIndentation()
{
    QTextCursor caret = textCursor();
    const int column = caret.positionInBlock();
    const QString before = caret.block().text().left(column);
    if (caret.hasSelection() || column == 0 || before.count(QLatin1Char(' ')) != column)
        return false;
    const int step = column % indentWidth == 0 ? indentWidth : column % indentWidth;
    caret.setPosition(caret.position() - step, QTextCursor::KeepAnchor);
    caret.removeSelectedText();
    return true;
}

} // namespace zn
