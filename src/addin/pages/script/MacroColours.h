#pragma once

#include "addin/pages/script/LineColours.h"

#include <array>
#include <QColor>
#include <QTextCharFormat>

class QPalette;

namespace zn {

/// The colours of the macro editor for a light or a dark palette.
struct MacroColours {
    std::array<QTextCharFormat, sourcePartCount> parts; ///< by `SourcePart`
    QColor error;
    QColor currentLine;
    QColor blockWord; ///< behind the words of the block at the caret
    QColor gutter;
    QColor lineNumber;
    QColor currentLineNumber;
};

/// Whether a palette is dark is told by its base colour.
MacroColours macroColours(const QPalette& palette);

} // namespace zn
