#include "addin/pages/script/MacroHighlighter.h"

#include "qtglue/Texts.h"

namespace zn {

namespace {

/// A block's state, which tells the next block that it begins inside a comment.
enum LineState { Plain = 0, CommentGoesOn = 1 };

} // namespace

MacroHighlighter::MacroHighlighter(QTextDocument* document, const MacroColours& colours)
    : QSyntaxHighlighter(document)
    , m_colours(colours)
{
}

void MacroHighlighter::setColours(const MacroColours& colours)
{
    m_colours = colours;
    rehighlight();
}

void MacroHighlighter::highlightBlock(const QString& line)
{
    const TextView text = viewOf(line);
    const ColouredLine coloured = colouredLine(text, previousBlockState() == CommentGoesOn);
    for (const ColouredPart& one : coloured.parts)
        setFormat(static_cast<int>(one.position), static_cast<int>(one.length),
            m_colours.parts[static_cast<std::size_t>(one.part)]);
    setCurrentBlockState(coloured.commentGoesOn ? CommentGoesOn : Plain);
}

} // namespace zn
