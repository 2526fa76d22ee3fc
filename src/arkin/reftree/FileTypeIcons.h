#pragma once

#include <QIcon>

namespace zn::arkin {

/// The icon of a file type (".zenasm"), in any size; drawn at its first use and kept. User interface thread.
QIcon fileTypeIcon(const QString& extension);

} // namespace zn::arkin
