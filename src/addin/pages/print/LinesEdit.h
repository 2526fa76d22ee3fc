#pragma once

#include <QPlainTextEdit>

namespace zn {

/// An edit for a few short lines, which asks for that much room in every font. Tab leaves it.
class LinesEdit final : public QPlainTextEdit {
public:
    explicit LinesEdit(QWidget* parent)
        : QPlainTextEdit(parent)
    {
        setTabChangesFocus(true);
    }

    QSize sizeHint() const override { return sizeFor(20, 4); }
    QSize minimumSizeHint() const override { return sizeFor(10, 2); }

private:
    QSize sizeFor(int characters, int lines) const
    {
        const int frame = 2 * frameWidth() + 2 * static_cast<int>(document()->documentMargin());
        return {characters * fontMetrics().averageCharWidth() + frame, lines * fontMetrics().lineSpacing() + frame};
    }
};

} // namespace zn
