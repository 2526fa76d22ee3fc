#pragma once

#include "addin/pages/script/MacroColours.h"

#include <QSyntaxHighlighter>

namespace zn {

/// Colours a document as a macro template.
class MacroHighlighter : public QSyntaxHighlighter {
public:
    MacroHighlighter(QTextDocument* document, const MacroColours& colours);

    /// Colours the whole document anew.
    void setColours(const MacroColours& colours);

protected:
    void highlightBlock(const QString& line) override;

private:
    MacroColours m_colours;
};

} // namespace zn
