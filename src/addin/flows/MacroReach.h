#pragma once

#include "base/Dispatch.h"
#include "contracts/host/ArkTask.h"
#include "contracts/host/ArkVault.h"

#include <vector>

namespace zn {

class Registry;

/// The value of `addInKey` of the user that `confinesMacro` reads.
inline constexpr TextView confineMacrosValue = u"ConfineMacros";
inline constexpr std::int32_t confineEveryScript = 2;

/// Whether the script is the product's own macro, of this version or an earlier one, and not one that somebody wrote.
bool isOwnMacro(const Text& script);

/// Whether a run of this script confines its macros to the task's folders. The names and card values of files get into
/// a macro's text as they are, and those who write them are not those who wrote the macro. So the product's own
/// conversion and print macros are confined; a script that an administrator wrote, also one that began as one of
/// these, is a program that may do what its author wants. The number "ConfineMacros" below `addInKey` of the user says
/// otherwise: 0 confines none, 2 confines every script.
bool confinesMacro(Registry& registry, const Text& script);

/// The last folder of an output path above everything that a file may decide; empty if the path names none. A file in
/// `fileFolder` of the vault whose local folder is `vaultRoot`, which has no separator at its end.
Text folderOfOutputs(Text path, const Text& vaultRoot, const Text& fileFolder);

/// The folders that a confined macro for the file at `filePath` may reach: the vault's, that of the log if the task
/// keeps one, and those of the output paths, as far as the task itself spells them out: a folder that a file's name or
/// card value would choose is no folder of the task.
/// `task` is the run's instance. Failures of the host are raised.
std::vector<Text> reachableFolders(IArkVault& vault, const ObjectRef& task, const Text& filePath, const Text& logPath);

} // namespace zn
