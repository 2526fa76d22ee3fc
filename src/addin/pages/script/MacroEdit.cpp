#include "addin/pages/script/MacroEdit.h"

#include "addin/pages/script/MacroHighlighter.h"
#include "qtglue/Texts.h"

#include <algorithm>
#include <QFontDatabase>
#include <QHelpEvent>
#include <QPainter>
#include <QTextBlock>
#include <QToolTip>

namespace zn {

namespace {

constexpr std::size_t mostMarks = 200; ///< more would make painting slow, and nobody reads them

class Gutter : public QWidget {
public:
    explicit Gutter(MacroEdit* edit)
        : QWidget(edit)
        , m_edit(edit)
    {
        setObjectName("lineNumbers");
    }

    QSize sizeHint() const override { return {m_edit->gutterWidth(), 0}; }

protected:
    void paintEvent(QPaintEvent* event) override { m_edit->paintGutter(event); }

private:
    MacroEdit* m_edit;
};

/// The text with single line feeds.
Text withLineFeeds(TextView text)
{
    Text out(text);
    replaceAll(out, u"\r\n", u"\n");
    replaceAll(out, u"\r", u"\n");
    return out;
}

} // namespace

MacroEdit::MacroEdit(QWidget* parent)
    : QPlainTextEdit(parent)
    , m_colours(macroColours(palette()))
    , m_highlighter(new MacroHighlighter(document(), m_colours))
    , m_gutter(new Gutter(this))
{
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(font().pointSizeF());
    setFont(fixed);
    setLineWrapMode(NoWrap);
    setTabStopDistance(QFontMetricsF(fixed).horizontalAdvance(QLatin1Char(' ')) * indentWidth);
    connect(this, &QPlainTextEdit::blockCountChanged, this, [this] { placeGutter(); });
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
        if (dy != 0)
            m_gutter->scroll(0, dy);
        else
            m_gutter->update(0, rect.y(), m_gutter->width(), rect.height());
    });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] { markCaret(); });
    placeGutter();
    markCaret();
}

MacroEdit::~MacroEdit() = default;

void MacroEdit::setMacroText(TextView text)
{
    m_set = text;
    setPlainText(shown(text));
}

void MacroEdit::replaceMacroText(TextView text)
{
    m_set = text;
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    all.insertText(shown(text));
    moveCursor(QTextCursor::Start);
}

Text MacroEdit::plainText() const
{
    // `toPlainText` would turn hard blanks into plain ones.
    QString text = document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    return typed(text);
}

Text MacroEdit::macroText() const
{
    Text text = plainText();
    if (text == withLineFeeds(m_set))
        return m_set;
    if (m_set.find(u"\r\n") != Text::npos)
        replaceAll(text, u"\n", u"\r\n");
    return text;
}

void MacroEdit::insertAtCaret(TextView text)
{
    textCursor().insertText(shown(text));
    ensureCursorVisible();
}

void MacroEdit::setProblems(const std::vector<TemplateProblem>& problems)
{
    m_marks.clear();
    for (const TemplateProblem& problem : problems) {
        if (m_marks.size() == mostMarks)
            break;
        Mark mark{{QTextCursor(document()), {}}, problem.message};
        const int length = document()->characterCount() - 1;
        mark.selection.cursor.setPosition(std::min(static_cast<int>(problem.position), length));
        mark.selection.cursor.setPosition(
            std::min(static_cast<int>(problem.position + problem.length), length), QTextCursor::KeepAnchor);
        mark.selection.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        mark.selection.format.setUnderlineColor(m_colours.error);
        m_marks.push_back(std::move(mark));
    }
    showMarks();
}

Text MacroEdit::problemAt(int position) const
{
    for (const Mark& mark : m_marks) {
        if (mark.selection.cursor.selectionStart() <= position && position <= mark.selection.cursor.selectionEnd())
            return mark.message;
    }
    return {};
}

void MacroEdit::goToNextProblem()
{
    if (m_marks.empty())
        return;
    const int caretPosition = textCursor().position();
    const auto next = std::ranges::find_if(
        m_marks, [caretPosition](const Mark& mark) { return mark.selection.cursor.selectionStart() > caretPosition; });
    QTextCursor caret = textCursor();
    caret.setPosition((next == m_marks.end() ? m_marks.front() : *next).selection.cursor.selectionStart());
    setTextCursor(caret);
}

// --- marks

void MacroEdit::markCaret()
{
    updateBlockWords();
    showMarks();
    m_gutter->update();
}

void MacroEdit::updateBlockWords()
{
    m_blockWords.clear();
    // Only a caret at a word can stand at a block's word; the blocks are read anew only then.
    QTextCursor word = textCursor();
    word.select(QTextCursor::WordUnderCursor);
    if (!word.hasSelection())
        return;
    if (m_blocksRevision != document()->revision()) {
        m_blocks = macroBlocks(plainText());
        m_blocksRevision = document()->revision();
    }
    const MacroBlock* block = blockAt(m_blocks, static_cast<std::size_t>(textCursor().position()));
    if (block && block->closed)
        m_blockWords = block->words;
}

void MacroEdit::showMarks()
{
    QList<QTextEdit::ExtraSelection> all;
    QTextEdit::ExtraSelection line{textCursor(), {}};
    line.cursor.clearSelection();
    line.format.setBackground(m_colours.currentLine);
    line.format.setProperty(QTextFormat::FullWidthSelection, true);
    all.append(line);
    for (const SourceRange& range : m_blockWords) {
        QTextEdit::ExtraSelection word{QTextCursor(document()), {}};
        word.cursor.setPosition(static_cast<int>(range.position));
        word.cursor.setPosition(static_cast<int>(range.position + range.length), QTextCursor::KeepAnchor);
        word.format.setBackground(m_colours.blockWord);
        all.append(word);
    }
    for (const Mark& mark : m_marks)
        all.append(mark.selection);
    setExtraSelections(all);
}

bool MacroEdit::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QPlainTextEdit::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const Text message = problemAt(cursorForPosition(help->pos()).position());
    if (message.empty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), shown(message), viewport());
    return true;
}

// --- the column of line numbers

QSize MacroEdit::sizeHint() const
{
    constexpr int columns = 80;
    constexpr int lines = 22;
    const QFontMetrics metrics(font());
    return {gutterWidth() + columns * metrics.horizontalAdvance(QLatin1Char('9')), lines * metrics.lineSpacing()};
}

int MacroEdit::gutterWidth() const
{
    const auto digits = QString::number(std::max(blockCount(), 99)).size();
    const QFontMetrics metrics(font());
    return metrics.horizontalAdvance(QLatin1Char('9')) * static_cast<int>(digits + 2);
}

void MacroEdit::placeGutter()
{
    const int width = gutterWidth();
    const bool mirrored = isRightToLeft();
    setViewportMargins(mirrored ? 0 : width, 0, mirrored ? width : 0, 0);
    const QRect area = contentsRect();
    m_gutter->setGeometry(mirrored ? area.right() - width + 1 : area.left(), area.top(), width, area.height());
}

void MacroEdit::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    placeGutter();
}

void MacroEdit::paintGutter(QPaintEvent* event)
{
    QPainter painter(m_gutter);
    painter.fillRect(event->rect(), m_colours.gutter);
    painter.setFont(font());
    const int room = QFontMetrics(font()).horizontalAdvance(QLatin1Char('9'));
    const int current = textCursor().blockNumber();
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
        if (place.top() > event->rect().bottom())
            break;
        painter.setPen(block.blockNumber() == current ? m_colours.currentLineNumber : m_colours.lineNumber);
        painter.drawText(QRectF(0, place.top(), m_gutter->width() - room, place.height()),
            Qt::AlignRight | Qt::AlignVCenter, QString::number(block.blockNumber() + 1));
    }
}

void MacroEdit::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColours();
    else if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange)
        placeGutter();
}

void MacroEdit::applyColours()
{
    m_colours = macroColours(palette());
    m_highlighter->setColours(m_colours);
    for (Mark& mark : m_marks)
        mark.selection.format.setUnderlineColor(m_colours.error);
    markCaret();
}

} // namespace zn
