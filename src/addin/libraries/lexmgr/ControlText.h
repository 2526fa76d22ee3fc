#pragma once

#include <QWidget>

namespace lexmgr {

/// Gives a control its text: a label, button or group box shows it, any other control bears it as the name that a
/// screen reader says.
void setControlText(QWidget& control, const QString& text);

/// Whether a layout of the control's parent decides where it stands.
bool isPlacedByLayout(const QWidget& control);

} // namespace lexmgr
