#pragma once

#include <QStyleOption>
#include <QToolButton>

namespace zn {

/// One of two buttons of which one is pressed. The pressed one has the colours of a selection, since a pressed look
/// alone can't be told in a dark palette.
class VersionButton final : public QToolButton {
public:
    explicit VersionButton(QWidget* parent)
        : QToolButton(parent)
    {
        setCheckable(true);
    }

protected:
    void initStyleOption(QStyleOptionToolButton* option) const override
    {
        QToolButton::initStyleOption(option);
        if (!isChecked())
            return;
        option->palette.setBrush(QPalette::Button, option->palette.brush(QPalette::Highlight));
        option->palette.setBrush(QPalette::ButtonText, option->palette.brush(QPalette::HighlightedText));
    }
};

} // namespace zn
