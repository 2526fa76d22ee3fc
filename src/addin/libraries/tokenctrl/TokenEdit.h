#pragma once

#include "addin/libraries/tokenctrl/TokenChip.h"

#include <functional>
#include <QTextEdit>

class QMimeData;

namespace tokenctrl {

class TokenPatterns;

/// The edit itself: one paragraph of text in which a token is one character of the document. It is one line high and
/// grows with its text up to a few lines; what is longer scrolls. Enter and Tab stay
/// with the dialog.
class TokenEdit : public QTextEdit {
    Q_OBJECT
public:
    /// `patterns` must outlive the edit.
    explicit TokenEdit(const TokenPatterns& patterns);

    /// The text with tokens as their patterns.
    QString plainText() const;
    /// See `TokenBox::mvSetText`.
    void setPlain(const QString& text);
    /// Puts a text in place of the selection; one step of undo.
    void insertPlain(const QString& text);

    /// The part of the plain text between two places of the document.
    QString plainBetween(int from, int to) const;
    /// From a place in the plain text to one in the document; one inside a token gives the token's begin or,
    /// `behindToken`, its end.
    int documentPosition(qsizetype plainPosition, bool behindToken) const;

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// Called after each change of the text.
    std::function<void()> onChanged;
    /// Called when a person asks for the menu with Alt+Down.
    std::function<void()> onMenuRequested;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    /// Makes one change of the text, which is one step of undo (or, `continuesLast`, a part of the last one): what
    /// `change` does and the tokens that come of it. Then it is told.
    void edit(const std::function<void()>& change, bool continuesLast = false);
    void textWasChanged();
    void notify();
    /// Turns each pattern of the document's text into a token.
    void tokenise();
    void replaceByTyped(const QString& text);
    /// What is typed without a pause in another place is one step of undo.
    void type(const QString& text);
    /// What the dialog calls the place in which the edit stands.
    QString nameOfPlace() const;
    /// Sets lines and margins for the present font.
    void layOut();
    /// Height in pixels of that many lines that hold tokens.
    int heightFor(int lines) const;
    /// Height in pixels of the edit for a text of that height.
    int boxHeight(qreal textHeight) const;
    void updateHeight();

    const TokenPatterns& m_patterns;
    TokenChip m_chip;
    int m_height = 0; ///< of the whole edit for the present text, in pixels
    bool m_isEditing = false;
    bool m_hasChanged = false;
    bool m_isNotifying = false;
    int m_typedUpTo = -1;     ///< where the last typed character ends
    int m_typedRevision = -1; ///< of the document behind it
};

} // namespace tokenctrl
