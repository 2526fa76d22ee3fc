#pragma once

#include <QTextDocument>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QToolButton;

namespace zn {

struct MacroEditorTexts;

/// Finds text in an edit: while it is typed, and on from the caret with Enter, Shift+Enter and the two buttons. At the
/// end it goes on from the other end. Hidden until it is opened; Escape closes it.
class FindBar : public QWidget {
public:
    /// `edit` outlives the bar.
    FindBar(QPlainTextEdit& edit, QWidget* parent);

    void setTexts(const MacroEditorTexts& texts);
    /// Shows the bar with the selection, if it lies in one line, as the text to find.
    void open();
    void close();
    /// The next or the previous place of the text; opens the bar while there is no text.
    void find(QTextDocument::FindFlags direction = {});

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void findFrom(int position, QTextDocument::FindFlags direction);
    void show(const QTextCursor& hit, const QString& note);

    QPlainTextEdit& m_edit;
    QLabel* m_label;
    QLineEdit* m_text;
    QPushButton* m_next;
    QPushButton* m_previous;
    QCheckBox* m_matchCase;
    QLabel* m_note;
    QToolButton* m_close;
    QString m_notFound;
    QString m_wrapped;
};

} // namespace zn
