#pragma once

#include "qtglue/Texts.h"
#include "qtglue/Windows.h"

#include <QCoreApplication>

class QTreeView;

namespace zn::arkin {

using zn::shown;
using zn::typed;

/// A text of the host's windows in the language of the desktop.
inline QString own(const char* english) { return QCoreApplication::translate("Desktop", english); }

/// Gives a window that size, in units of its font's letters and lines, as far as its screen has room.
void resizeByFont(QWidget& window, int letters, int lines);

/// Widens the columns of a list whose titles would be cut off.
void giveTitlesRoom(QTreeView& list);

/// Shows what the exception now being handled means, in a message box over the window. To be called inside a `catch`
/// block only.
void tellCurrentFailure(QWidget* parent) noexcept;
/// Shows a sentence until the user closes it.
void tell(QWidget* parent, const QString& sentence);

/// Runs the work of a slot or an event handler. What it raises ends in a message box.
template <class Work> void inSlot(QWidget* parent, Work&& work) noexcept
{
    zn::guarded(work, [&]() noexcept { tellCurrentFailure(parent); });
}

} // namespace zn::arkin
