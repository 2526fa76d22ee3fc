#pragma once

#include "base/Text.h"

namespace zn {

/// Backslash paths as plain text functions: nothing here touches a disk. "/" counts as a separator on reading.

/// The last component ("C:\V\a.b.step" gives "a.b.step").
Text pathFileName(TextView path);
/// The extension of the last component with its dot, or empty (".step").
Text pathExtension(TextView path);
/// The last component without its extension.
Text pathStem(TextView path);
/// The path without its last component and without a trailing separator; "C:\a" gives "C:\".
Text pathFolder(TextView path);
/// The text behind the last "." of the whole path; the whole path if there is no dot.
Text textBehindLastDot(TextView path);
/// Replaces the extension of the last component; `extension` has its dot.
Text pathWithExtension(TextView path, TextView extension);
/// Appends by the ordinary rules: a single separator between, an absolute second part takes the place of the first,
/// an empty second part changes nothing.
Text pathAppend(TextView path, TextView more);
bool isAbsolutePath(TextView path);
/// Whether a path begins with a drive: a letter and a colon. Any other colon belongs to a name ("1:2 scale.pdf").
bool startsWithDrive(TextView path);
/// Resolves "." and ".." parts and doubled separators, and turns "/" into "\". A path that would climb above its root
/// stays at it.
Text canonicalPath(TextView path);
Text withoutTrailingSeparators(TextView path);
/// Whether `path` begins with `folder` as a whole path ("C:\V" holds "C:\V" and "C:\V\a" but not "C:\Vx").
bool isInFolder(TextView path, TextView folder);

} // namespace zn
