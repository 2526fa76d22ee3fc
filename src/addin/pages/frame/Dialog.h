#pragma once

#include "addin/pages/frame/LexWnd.h"

#include <QDialog>

namespace zn {

/// A modal dialog with its own texts. `exec` runs it; Enter presses its default button, Escape cancels.
class Dialog : public QDialog, protected LexWnd {
protected:
    Dialog(PageEnvironment& environment, QWidget* parent, const char16_t* lexName)
        : QDialog(parent)
        , LexWnd(environment, *this, lexName)
    {
    }
};

} // namespace zn
