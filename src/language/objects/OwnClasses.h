#pragma once

#include "base/Dispatch.h"

namespace zn::language {

class FileAccess;

/// An object of a class that the language brings along ("Collection", "Scripting.Dictionary",
/// "Scripting.FileSystemObject", "VBScript.RegExp"); null for any other name. It must not outlive `files`.
DispatchRef createOwnObject(TextView className, FileAccess& files);

DispatchRef makeCollection();
DispatchRef makeDictionary();
DispatchRef makeFileSystemObject(FileAccess& files);
DispatchRef makeRegExp();

} // namespace zn::language
