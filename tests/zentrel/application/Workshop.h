#pragma once

#include "platform/linux/LinuxPlatform.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/application/Application.h"

#include <functional>
#include <map>

namespace zn::zentrel::test {

/// A home in a temporary folder with an application in it, and documents of our own to open.
class Workshop {
public:
    explicit Workshop(std::function<bool()> stopRequested = {});

    /// The backslash path of a file in the folder.
    Text path(const std::string& name) { return platform.files().fromMachine(folder / name); }
    std::filesystem::path file(const std::string& name) const { return folder / name; }

    /// A part with a box of 10 x 20 x 30 mm in each configuration, the n-th n times as long.
    std::filesystem::path makePart(const std::string& name, const std::vector<Text>& configurations);
    /// An assembly of one part that it refers to and one virtual part "Bolt".
    std::filesystem::path makeAssembly(const std::string& name);
    /// A drawing with a sheet for each name.
    std::filesystem::path makeDrawing(const std::string& name, const std::vector<Text>& sheets);

    /// Opens a document as macros do. Fails the test if it can't be opened.
    DispatchRef open(const Text& path, DocumentKind kind);

    TemporaryFolder folder;
    zn::LinuxPlatform platform;
    std::vector<std::string> log;
    std::vector<std::string> printed;
    std::vector<std::filesystem::path> expected; ///< what was to be read ahead
    std::optional<MeshQuality> expectedMesh;     ///< and to be meshed
    std::shared_ptr<Application> application;
};

class WorkshopTest : public ::testing::Test {
protected:
    Workshop shop;
};

/// Keeps the events that it gets; `handler`, if set, answers them.
class EventLog : public zn::EventSink {
public:
    Status onEvent(std::int32_t number, const std::vector<Value>& arguments) override
    {
        events.push_back(zn::numberText(number) + (arguments.empty() ? u"" : u" " + arguments[0].toText()));
        return handler ? handler(number) : zn::S_OK;
    }
    std::vector<Text> events;
    std::function<Status(std::int32_t)> handler;
};

/// Calls a member and gives its arguments back with the results in them.
std::vector<Value> callWithResults(
    DispatchObject& object, const Text& name, std::vector<Value> arguments, Value* result);

/// A default macro with a task's settings put in; what is not set is 0.
std::string macroWith(const char* name, const std::map<std::string, std::string>& settings);
/// The object that a member answers; null for nothing.
DispatchRef objectOf(DispatchObject& object, const Text& name, std::vector<Value> arguments = {});

} // namespace zn::zentrel::test
