#pragma once

#include "host/ArkAddIn.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"

#include <memory>
#include <vector>

namespace arkin {

/// An add-in library of this machine that stays loaded as long as this object lives, and beyond when it says itself
/// that objects of it are left.
class AddInModule {
public:
    /// Raises `StatusError` with a sentence if the library isn't there, can't be loaded, or lacks an export.
    AddInModule(const std::filesystem::path& library);
    AddInModule(const AddInModule&) = delete;
    AddInModule& operator=(const AddInModule&) = delete;
    ~AddInModule();

    /// Makes an object of a class. Raises `StatusError` with a sentence.
    zn::ObjectRef create(const zn::Text& classId) const;
    /// Calls `DllRegisterServer` or `DllUnregisterServer`. Raises `StatusError` with a sentence.
    void registerServer() const;
    void unregisterServer() const;

private:
    void* symbol(const char* name) const;
    void callFunction(const char* name, const char* what) const;

    std::filesystem::path m_library;
    void* m_handle = nullptr;
};

/// Loads the add-in behind a program identifier, as every host does: the registry's class id, its library, the
/// library's factory. The object keeps its library loaded. A library whose object isn't an `IArkAddIn5` is refused.
/// Every failure is a `StatusError` with a sentence.
std::shared_ptr<zn::IArkAddIn5> loadAddIn(zn::Registry& registry, zn::FileSystem& files, const zn::Text& programId);

/// A registered class with its library, for a list of what is there.
struct RegisteredAddIn {
    zn::Text programId;
    zn::Text classId;
    zn::Text library; ///< backslash path
};
/// All program identifiers of the machine that lead to a library.
std::vector<RegisteredAddIn> registeredAddIns(zn::Registry& registry);

} // namespace arkin
