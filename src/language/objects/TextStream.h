#pragma once

#include "base/Dispatch.h"
#include "language/FileAccess.h"

namespace zn::language {

enum class StreamMode { Read, Write, Append };

/// A text file that a macro reads or writes through an object. `wide` files hold 16-bit units behind a mark,
/// the others the single-byte code page. Raises `ScriptError`.
DispatchRef openTextStream(FileAccess& files, const Text& path, StreamMode mode, bool wide);

} // namespace zn::language
