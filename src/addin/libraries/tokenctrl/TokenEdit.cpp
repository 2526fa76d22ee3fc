#include "addin/libraries/tokenctrl/TokenEdit.h"

#include "addin/libraries/tokenctrl/TokenPatterns.h"

#include <algorithm>
#include <QAbstractTextDocumentLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QToolTip>

namespace tokenctrl {

namespace {

/// The text as one paragraph can hold it.
QString oneLine(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    for (QChar& character : text) {
        const bool breaksLine = character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
        if (breaksLine || character.category() == QChar::Other_Control
            || character == QChar::ObjectReplacementCharacter)
            character = QLatin1Char(' ');
    }
    return text;
}

bool isTyping(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
    if (event.text().isEmpty() || modifiers == Qt::ControlModifier
        || modifiers == (Qt::ControlModifier | Qt::ShiftModifier))
        return false;
    const QChar first = event.text().front();
    return first.isPrint() || first.isSurrogate() || first.category() == QChar::Other_Format
        || first.category() == QChar::Other_PrivateUse;
}

bool isDeletion(QKeyEvent& event)
{
    constexpr QKeySequence::StandardKey deletions[] = {QKeySequence::Delete, QKeySequence::Backspace,
        QKeySequence::DeleteStartOfWord, QKeySequence::DeleteEndOfWord, QKeySequence::DeleteEndOfLine,
        QKeySequence::DeleteCompleteLine, QKeySequence::Cut};
    return event.key() == Qt::Key_Backspace
        || std::any_of(std::begin(deletions), std::end(deletions), [&](auto key) { return event.matches(key); });
}

/// Walks the document's text: `visit(character, pattern)`, the pattern empty for plain text, in document order.
template <class Visitor> void walk(const QTextDocument& document, const Visitor& visit)
{
    for (auto place = document.firstBlock().begin(); !place.atEnd(); ++place) {
        const QTextFragment fragment = place.fragment();
        const QString pattern = tokenPattern(fragment.charFormat());
        for (const QChar character : fragment.text())
            visit(character, character == QChar::ObjectReplacementCharacter ? pattern : QString());
    }
}

} // namespace

TokenEdit::TokenEdit(const TokenPatterns& patterns)
    : m_patterns(patterns)
    , m_chip(*this, patterns)
{
    document()->documentLayout()->registerHandler(tokenFormat(QString()).objectType(), &m_chip);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setInputMethodHints(Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);
    connect(this, &QTextEdit::textChanged, this, &TokenEdit::textWasChanged);
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
        &TokenEdit::updateHeight);
    layOut();
}

QString TokenEdit::plainText() const
{
    QString text;
    walk(*document(), [&](QChar character, const QString& pattern) {
        pattern.isEmpty() ? text.append(character) : text.append(pattern);
    });
    return text;
}

QString TokenEdit::plainBetween(int from, int to) const
{
    QString text;
    int position = 0;
    walk(*document(), [&](QChar character, const QString& pattern) {
        if (position >= from && position < to)
            pattern.isEmpty() ? text.append(character) : text.append(pattern);
        ++position;
    });
    return text;
}

int TokenEdit::documentPosition(qsizetype plainPosition, bool behindToken) const
{
    int position = 0;
    qsizetype plain = 0;
    walk(*document(), [&](QChar, const QString& pattern) {
        const qsizetype length = std::max<qsizetype>(pattern.size(), 1);
        if (plain + length <= plainPosition || (behindToken && plain < plainPosition))
            ++position;
        plain += length;
    });
    return position;
}

void TokenEdit::edit(const std::function<void()>& change, bool continuesLast)
{
    if (m_isEditing) {
        change();
        return;
    }
    m_isEditing = true;
    QTextCursor step = textCursor(); // undo puts the caret back to where this cursor is
    continuesLast ? step.joinPreviousEditBlock() : step.beginEditBlock();
    change();
    tokenise();
    step.endEditBlock();
    m_isEditing = false;
    if (std::exchange(m_hasChanged, false)) {
        ensureCursorVisible();
        notify();
    }
}

void TokenEdit::textWasChanged()
{
    if (m_isEditing)
        m_hasChanged = true;
    else if (document()->isRedoAvailable())
        notify(); // somebody goes through the steps of undo, each of which has its tokens
    else
        edit([this] { m_hasChanged = true; }, true); // a change from outside, such as one of the context menu
}

void TokenEdit::notify()
{
    // The callback may set the text, which is a change of which it is told in turn.
    const bool wasNotifying = std::exchange(m_isNotifying, true);
    if (onChanged)
        onChanged();
    m_isNotifying = wasNotifying;
}

void TokenEdit::tokenise()
{
    const QString text = document()->firstBlock().text();
    const std::vector<PatternMatch> matches = m_patterns.matches(text);
    if (matches.empty())
        return;
    QTextCursor cursor(document());
    // From the end, so that the places of the matches before stay as they are.
    for (auto match = matches.rbegin(); match != matches.rend(); ++match) {
        cursor.setPosition(static_cast<int>(match->position));
        cursor.setPosition(static_cast<int>(match->position + match->length), QTextCursor::KeepAnchor);
        cursor.insertText(
            QString(QChar::ObjectReplacementCharacter), tokenFormat(text.mid(match->position, match->length)));
    }
}

void TokenEdit::setPlain(const QString& text)
{
    const QString wanted = oneLine(text);
    if (m_isNotifying) {
        replaceByTyped(wanted);
        return;
    }
    setUndoRedoEnabled(false);
    edit([&] {
        QTextCursor cursor(document());
        cursor.select(QTextCursor::Document);
        cursor.insertText(wanted, QTextCharFormat());
        moveCursor(QTextCursor::End);
        m_hasChanged = true; // the callback runs also when the text is the same
    });
    setUndoRedoEnabled(true);
}

/// Changes only what differs, so that the caret stays where the person types.
void TokenEdit::replaceByTyped(const QString& text)
{
    const QString before = plainText();
    if (before == text)
        return;
    const qsizetype shorter = std::min(before.size(), text.size());
    qsizetype prefix = 0;
    while (prefix < shorter && before[prefix] == text[prefix])
        ++prefix;
    qsizetype suffix = 0;
    while (suffix < shorter - prefix && before[before.size() - 1 - suffix] == text[text.size() - 1 - suffix])
        ++suffix;

    const auto replace = [&] {
        QTextCursor cursor(document());
        cursor.setPosition(documentPosition(prefix, false));
        cursor.setPosition(documentPosition(before.size() - suffix, true), QTextCursor::KeepAnchor);
        // Whole tokens at the ends of the range go, so their parts that stay come back as text.
        const qsizetype begin = plainBetween(0, cursor.selectionStart()).size();
        const qsizetype end = before.size() - plainBetween(0, cursor.selectionEnd()).size();
        cursor.insertText(text.mid(begin, text.size() - begin - end), QTextCharFormat());
    };
    edit(replace, true);
}

void TokenEdit::insertPlain(const QString& text)
{
    edit([&] { textCursor().insertText(oneLine(text), QTextCharFormat()); });
}

void TokenEdit::type(const QString& text)
{
    const QTextCursor caret = textCursor();
    const bool continuesRun
        = !caret.hasSelection() && caret.position() == m_typedUpTo && document()->revision() == m_typedRevision;
    edit([&] { textCursor().insertText(oneLine(text), QTextCharFormat()); }, continuesRun);
    m_typedUpTo = textCursor().position();
    m_typedRevision = document()->revision();
}

void TokenEdit::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter || event->matches(QKeySequence::InsertParagraphSeparator)
        || event->matches(QKeySequence::InsertLineSeparator)) {
        event->ignore();
        return;
    }
    if (event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier)) {
        if (onMenuRequested)
            onMenuRequested();
        return;
    }
    if (!isReadOnly() && isTyping(*event))
        type(event->text());
    else if (isDeletion(*event))
        edit([&] { QTextEdit::keyPressEvent(event); });
    else
        QTextEdit::keyPressEvent(event);
}

void TokenEdit::inputMethodEvent(QInputMethodEvent* event)
{
    QTextEdit::inputMethodEvent(event);
    if (!event->commitString().isEmpty())
        edit([] {}, true);
}

QMimeData* TokenEdit::createMimeDataFromSelection() const
{
    const QTextCursor cursor = textCursor();
    auto* mime = new QMimeData;
    mime->setText(plainBetween(cursor.selectionStart(), cursor.selectionEnd()));
    return mime;
}

bool TokenEdit::canInsertFromMimeData(const QMimeData* source) const { return source->hasText(); }

void TokenEdit::insertFromMimeData(const QMimeData* source)
{
    if (!isReadOnly() && source->hasText())
        insertPlain(source->text());
}

bool TokenEdit::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        const int position = document()->documentLayout()->hitTest(
            QPointF(help->pos()) + QPointF(0, verticalScrollBar()->value()), Qt::ExactHit);
        if (position >= 0) {
            QTextCursor cursor(document());
            cursor.setPosition(std::min(position + 1, document()->characterCount() - 1));
            const QString pattern = tokenPattern(cursor.charFormat());
            const auto known = m_patterns.find(pattern);
            const QString second = known && !known->secondText.isEmpty() ? known->secondText : pattern;
            if (!second.isEmpty()) {
                QToolTip::showText(help->globalPos(), second.toHtmlEscaped(), this);
                return true;
            }
        }
    }
    return QTextEdit::viewportEvent(event);
}

void TokenEdit::resizeEvent(QResizeEvent* event)
{
    QTextEdit::resizeEvent(event);
    updateHeight();
}

void TokenEdit::showEvent(QShowEvent* event)
{
    // By now the dialog has named the place in its language.
    if (accessibleName().isEmpty())
        setAccessibleName(nameOfPlace());
    QTextEdit::showEvent(event);
}

QString TokenEdit::nameOfPlace() const
{
    const QWidget* place = parentWidget();
    if (!place || !place->accessibleName().isEmpty())
        return place ? place->accessibleName() : QString();
    for (const QLabel* label : window()->findChildren<QLabel*>()) {
        if (label->buddy() == place)
            return label->text().remove(QLatin1Char('&'));
    }
    return {};
}

void TokenEdit::paintEvent(QPaintEvent* event)
{
    QTextEdit::paintEvent(event);
    QPainter painter(viewport());
    m_chip.drawSelected(painter);
}

void TokenEdit::changeEvent(QEvent* event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        layOut();
    }
}

} // namespace tokenctrl
