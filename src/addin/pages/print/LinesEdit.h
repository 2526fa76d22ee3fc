#pragma once

#include "base/Text.h"

#include <QPlainTextEdit>

namespace zn {

/// An edit for a few short lines, which asks for that much room in every font. Tab leaves it.
class LinesEdit final : public QPlainTextEdit {
public:
    explicit LinesEdit(QWidget* parent);

    void setLines(TextView text);
    /// The lines parted by CR LF, as macros take them: a lone line feed would end a macro's literal before its time.
    Text lines() const;

    QSize sizeHint() const override { return sizeFor(20, 4); }
    QSize minimumSizeHint() const override { return sizeFor(10, 2); }

private:
    QSize sizeFor(int characters, int lines) const;
};

} // namespace zn
