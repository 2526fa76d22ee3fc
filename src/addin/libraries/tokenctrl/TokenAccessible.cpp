#include "addin/libraries/tokenctrl/TokenAccessible.h"

#include "addin/libraries/tokenctrl/TokenEdit.h"

#include <algorithm>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QTextDocument>

namespace tokenctrl {

namespace {

/// Offsets are places in the plain text; a place inside a token stands for its begin.
class TokenAccessible final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit TokenAccessible(TokenEdit* edit)
        : QAccessibleWidget(edit, QAccessible::EditableText)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? edit().plainText() : QAccessibleWidget::text(kind);
    }

    void setText(QAccessible::Text kind, const QString& text) override
    {
        if (kind == QAccessible::Value)
            edit().setPlain(text);
        else
            QAccessibleWidget::setText(kind, text);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.editable = !edit().isReadOnly();
        state.readOnly = edit().isReadOnly();
        return state;
    }

    void selection(int index, int* start, int* end) const override
    {
        const QTextCursor cursor = edit().textCursor();
        *start = index == 0 ? plainOffset(cursor.selectionStart()) : 0;
        *end = index == 0 ? plainOffset(cursor.selectionEnd()) : 0;
    }
    int selectionCount() const override { return edit().textCursor().hasSelection() ? 1 : 0; }
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int) override
    {
        QTextCursor cursor = edit().textCursor();
        cursor.clearSelection();
        edit().setTextCursor(cursor);
    }
    void setSelection(int, int start, int end) override
    {
        QTextCursor cursor(edit().document());
        cursor.setPosition(edit().documentPosition(start, false));
        cursor.setPosition(edit().documentPosition(end, true), QTextCursor::KeepAnchor);
        edit().setTextCursor(cursor);
    }
    int cursorPosition() const override { return plainOffset(edit().textCursor().position()); }
    void setCursorPosition(int position) override { setSelection(0, position, position); }
    QString text(int start, int end) const override { return edit().plainText().mid(start, end - start); }
    int characterCount() const override { return static_cast<int>(edit().plainText().size()); }
    QRect characterRect(int offset) const override
    {
        QTextCursor cursor(edit().document());
        cursor.setPosition(edit().documentPosition(offset, false));
        const QRect here = edit().cursorRect(cursor);
        return {edit().viewport()->mapToGlobal(here.topLeft()), here.size()};
    }
    int offsetAtPoint(const QPoint& point) const override
    {
        return plainOffset(edit().cursorForPosition(edit().viewport()->mapFromGlobal(point)).position());
    }
    void scrollToSubstring(int, int end) override
    {
        setCursorPosition(end);
        edit().ensureCursorVisible();
    }
    QString attributes(int, int* start, int* end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    TokenEdit& edit() const { return *static_cast<TokenEdit*>(widget()); }
    int plainOffset(int position) const { return static_cast<int>(edit().plainBetween(0, position).size()); }
};

QAccessibleInterface* make(const QString&, QObject* object)
{
    auto* edit = qobject_cast<TokenEdit*>(object);
    return edit ? new TokenAccessible(edit) : nullptr;
}

} // namespace

void installTokenAccessibility() { QAccessible::installFactory(make); }

} // namespace tokenctrl
