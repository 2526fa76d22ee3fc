#pragma once

#include "addin/pages/frame/LexWnd.h"

#include <initializer_list>

class QVBoxLayout;

namespace zn {

/// The window of an option dialog: a child of the frame, on which the dialog puts its controls.
class OptionWindow final : public QWidget, public LexWnd {
public:
    OptionWindow(PageEnvironment& environment, QWidget* parent, const char16_t* lexName)
        : QWidget(parent)
        , LexWnd(environment, *this, lexName)
    {
    }

    using LexWnd::control;
    using LexWnd::mbInitLexWnd;
    using LexWnd::ts;

    /// Places the controls below those that are placed already.
    void placeRows(std::initializer_list<QWidget*> controls);
    /// Places a control that belongs to the box above it, `levels` indents to the right.
    void placeIndented(QWidget* control, int levels = 1);
    /// The width of one indent.
    int indent() const;

private:
    QVBoxLayout* rows();
};

} // namespace zn
