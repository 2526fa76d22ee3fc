#pragma once

#include "base/Object.h"
#include "base/Text.h"
#include "platform/SharedLibrary.h"

namespace zn {

/// A library of classes on this machine (host/Module.h) that stays loaded as long as this object lives, and beyond
/// when it says itself that objects of it are left.
class ClassLibrary {
public:
    /// Raises `StatusError` with a sentence if the library isn't there, can't be loaded, or lacks an export.
    explicit ClassLibrary(const std::filesystem::path& library);
    ClassLibrary(const ClassLibrary&) = delete;
    ClassLibrary& operator=(const ClassLibrary&) = delete;
    ~ClassLibrary();

    /// Makes an object of a class. Raises `StatusError` with a sentence.
    ObjectRef create(const Text& classId) const;
    /// Calls `DllRegisterServer` or `DllUnregisterServer`. Raises `StatusError` with a sentence.
    void registerServer() const;
    void unregisterServer() const;

private:
    template <class Function> Function symbol(const char* name) const;
    void callFunction(const char* name, const char* what) const;

    std::filesystem::path m_file;
    SharedLibrary m_library;
};

} // namespace zn
