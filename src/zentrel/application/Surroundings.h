#pragma once

#include "platform/FileSystem.h"
#include "zentrel/application/ScriptObject.h"
#include "zentrel/formats/Mesh.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace zn {
class Printers;
}

namespace zn::zentrel {

/// What the application needs of the process around it. The references outlive the application.
struct Surroundings {
    zn::FileSystem& files;
    zn::Printers& printers;
    /// For files of this process's own (documents of virtual components). Whoever gives it removes it.
    std::filesystem::path workFolder;
    /// Takes one line for a person, as nobody sits in front of a window.
    std::function<void(const std::string&)> log;
    /// Whether whoever uses the application has gone or wants its work stopped, so that long work should end.
    std::function<bool()> stopRequested;
    /// `ExitApp`: the process shall end when the present call has been answered.
    std::function<void()> exit;
    /// Output of `Debug.Print`; the log if it is empty.
    std::function<void(const std::string&)> print;
    /// Takes a line for each line of a macro that runs and for each variable that it changes; empty for none.
    std::function<void(const std::string&)> trace = {};
    /// Has foreign files read that will be opened later, the first one first, and meshed if a quality is given. Never
    /// waits. Empty where nobody can.
    std::function<void(const std::vector<std::filesystem::path>& files, std::optional<MeshQuality> mesh)> readAhead
        = {};
    /// Runs the work of a macro that may reach `folders` only, with what the system itself can do to keep it there;
    /// just runs it if it is empty. Exceptions of the work are passed on.
    std::function<void(const std::vector<std::filesystem::path>& folders, const std::function<void()>& work)> confined
        = {};
};

} // namespace zn::zentrel
