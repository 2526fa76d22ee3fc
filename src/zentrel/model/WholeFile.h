#pragma once

#include "platform/AtomicFile.h"

#include <functional>

namespace zn::zentrel {

/// Writes a file that becomes visible whole (`zn::AtomicFile`): `write` fills the file, and a document is synced, which
/// an output file, that can be made again, need not be. Raises `NotWritable`, also for a target that is read-only or a
/// folder, and what `write` raises.
void writeWhole(const std::filesystem::path& target, zn::AtomicFile::Sync sync,
    const std::function<void(zn::AtomicFile& file)>& write);
/// The same for the bytes of an output file.
void writeWhole(const std::filesystem::path& target, std::string_view bytes);

/// `NotWritable` with the machine's reason for the error number `number`: "… can't be written: No space left on
/// device."
[[noreturn]] void raiseNotWritable(const std::filesystem::path& target, int number);

} // namespace zn::zentrel
