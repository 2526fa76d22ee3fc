#include "addin/pages/print/LinesEdit.h"

#include "qtglue/Texts.h"

namespace zn {

LinesEdit::LinesEdit(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
}

void LinesEdit::setLines(TextView text) { setPlainText(shown(text)); }

Text LinesEdit::lines() const
{
    // `toPlainText` would turn hard blanks into plain ones.
    QString text = document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return withCrLf(viewOf(text));
}

QSize LinesEdit::sizeFor(int characters, int lines) const
{
    const int frame = 2 * frameWidth() + 2 * static_cast<int>(document()->documentMargin());
    return {characters * fontMetrics().averageCharWidth() + frame, lines * fontMetrics().lineSpacing() + frame};
}

} // namespace zn
