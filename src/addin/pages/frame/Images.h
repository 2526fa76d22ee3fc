#pragma once

#include <QIcon>
#include <QString>

namespace zn {

/// A picture of the windows by its resource name, such as "PNG_SHEET" or, for one of the view buttons, "229". All suit
/// light and dark palettes and are sharp at every size. An unknown name gives a null icon.
///
/// Names: PNG_ALL_CARD, PNG_ASSEMBLY, PNG_CHECK_MARK, PNG_CONFIG_SELECTED, PNG_DATE_TIME, PNG_FILE, PNG_FILE_MODIFIED,
/// PNG_FOLDER_VAULT, PNG_PART, PNG_PRINTER, PNG_SHEET, PNG_VERSION_NUMBER, PNG_WORKFLOW; 222 to 230 for the nine views
/// not chosen, 236 to 244 for the same chosen.
QIcon image(const QString& name);
/// The same for a picture known by number.
QIcon image(int number);

/// The icon of files with this extension, with or without its dot, in any case: "zenprt", ".PDF". Files of unknown
/// types, and of none, have an icon too.
QIcon fileTypeIcon(const QString& extension);

} // namespace zn
