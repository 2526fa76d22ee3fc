#pragma once

#include <filesystem>
#include <stdexcept>

namespace zn {

/// A library that is loaded while the program runs, with its names kept to itself and all that it needs found at once.
/// It stays loaded until the process ends, unless it is unloaded: code of it may run longer than any owner knows.
class SharedLibrary {
public:
    /// A library that doesn't load, in the system's words, without a full stop.
    using Failure = std::runtime_error;

    enum class Stay {
        UntilUnloaded,
        /// Not even `unload` lets it go: a toolkit in it keeps references to its own code.
        Always,
    };
    /// A file, or a name that the system looks for. Raises `Failure`. A library that is loaded already gives the same
    /// one again.
    explicit SharedLibrary(const std::filesystem::path& file, Stay stay = Stay::UntilUnloaded);

    /// The address under which the library exports the name; null if it doesn't.
    void* find(const char* name) const;
    template <class Function> Function function(const char* name) const
    {
        return reinterpret_cast<Function>(find(name));
    }
    /// Lets the library go; it must not be asked again.
    void unload();

private:
    void* m_handle;
};

} // namespace zn
