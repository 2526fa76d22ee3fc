#pragma once

#include "addin/pages/script/BlockWords.h"
#include "addin/pages/script/MacroColours.h"
#include "addin/pages/script/TemplateCheck.h"

#include <QPlainTextEdit>

namespace zn {

class MacroHighlighter;

/// The text control for a macro template: fixed-width, with line numbers, colours, the words of the caret's block and
/// marks under mistakes. There is no limit to the text's length.
///
/// Tab and Shift+Tab indent. Ctrl+Tab and Ctrl+Shift+Tab leave the control, so that the keyboard isn't caught in it.
/// Enter takes over the line's indentation, one step more behind the opening line of a block; it puts a closing word
/// that stands further right than its block's opening line below that.
class MacroEdit : public QPlainTextEdit {
public:
    explicit MacroEdit(QWidget* parent = nullptr);
    ~MacroEdit() override;

    /// Replaces everything and forgets what could be undone.
    void setMacroText(TextView text);
    /// Replaces everything as one step that can be undone.
    void replaceMacroText(TextView text);
    /// The text with the line ends with which it was set. While nothing was changed, exactly the text that was set.
    Text macroText() const;
    /// The text with single line feeds, position for position as the document has it.
    Text plainText() const;

    /// Puts a text in place of the selection; can be undone.
    void insertAtCaret(TextView text);
    /// Marks these mistakes, which stand in `plainText()`.
    void setProblems(const std::vector<TemplateProblem>& problems);
    /// Moves the caret to the next marked mistake, from the last one to the first.
    void goToNextProblem();
    /// The message of a mistake at a place in the document, or empty.
    Text problemAt(int position) const;

    /// Room for a screen's worth of a macro.
    QSize sizeHint() const override;

    /// For the line number's column, which is a child.
    int gutterWidth() const;
    void paintGutter(QPaintEvent* event);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    struct Mark {
        QTextEdit::ExtraSelection selection; ///< moves with the text
        Text message;
    };

    void placeGutter();
    void applyColours();
    void markCaret();
    void showMarks();
    void updateBlockWords();

    // the keyboard (MacroEditKeys.cpp)
    bool handleKey(int key, Qt::KeyboardModifiers modifiers);
    void newLine();
    void alignClosingWord();
    void indent();
    void unindentLines();
    bool deleteIndentation();

    static constexpr int indentWidth = 4;

    MacroColours m_colours;
    MacroHighlighter* m_highlighter;
    QWidget* m_gutter;
    Text m_set; ///< as given by the last `setMacroText` or `replaceMacroText`
    std::vector<MacroBlock> m_blocks;
    int m_blocksRevision = -1; ///< of the document, for which `m_blocks` holds
    std::vector<SourceRange> m_blockWords;
    std::vector<Mark> m_marks;
};

} // namespace zn
