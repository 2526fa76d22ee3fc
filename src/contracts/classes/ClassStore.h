#pragma once

#include "base/Object.h"
#include "base/Text.h"

#include <vector>

/// The machine's store of classes: program identifier → class id → library, by the registry keys of host/Module.h.
namespace zn {

class FileSystem;
class Registry;

/// A registered class with its library.
struct RegisteredClass {
    Text programId;
    Text classId;
    Text library;           ///< backslash path
    bool isControl = false; ///< a window's control, by the key `Control` of its class; no add-in
};

/// All program identifiers of the machine that lead to a library.
std::vector<RegisteredClass> registeredClasses(Registry& registry);

/// Where the class is; `library` is empty when it isn't registered.
RegisteredClass findClass(Registry& registry, const Text& programId);

/// Makes an object of the class. It keeps its library loaded. Raises `StatusError` with a sentence: the class isn't
/// registered (`REGDB_E_CLASSNOTREG`), or its library doesn't give the object.
ObjectRef createInstance(Registry& registry, FileSystem& files, const Text& programId);
ObjectRef createInstance(FileSystem& files, const RegisteredClass& registered);

} // namespace zn
