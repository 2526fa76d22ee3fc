#pragma once

#include "base/Object.h"
#include "base/Status.h"
#include "base/Text.h"

/// How a host loads an add-in: program identifier → class id → library path, by the machine root's registry keys
///   SOFTWARE\Classes\<program identifier>\CLSID            (default value)
///   SOFTWARE\Classes\CLSID\<class id>\InprocServer32       (default value: the library's path)
/// then `DllGetClassObject` of that library, and from its factory the object.
namespace zn {

class IClassFactory : public Object {
public:
    virtual Status CreateInstance(ObjectRef& object) = 0;
};

/// Names and types of a module's exports.
using DllGetClassObjectFunction = Status (*)(const char16_t* classId, ObjectRef* factory);
using DllFunction = Status (*)();
inline constexpr const char* dllGetClassObjectName = "DllGetClassObject";
inline constexpr const char* dllCanUnloadNowName = "DllCanUnloadNow";
inline constexpr const char* dllRegisterServerName = "DllRegisterServer";
inline constexpr const char* dllUnregisterServerName = "DllUnregisterServer";

} // namespace zn
