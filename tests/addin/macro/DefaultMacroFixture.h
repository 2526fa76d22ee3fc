#pragma once

#include "addin/macro/MacroBuilder.h"
#include "addin/macro/MacroResources.h"
#include "addin/variables/TaskVariables.h"
#include "language/Machine.h"
#include "language/Program.h"
#include "tests/addin/macro/FakeCadApplication.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Files.h"
#include "tests/support/TestPlatform.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace zn::test {

using Calls = std::vector<std::string>;

/// A default macro, built as a run builds it, with every answer of the CAD application in the test's hand.
class DefaultMacroFixture : public ::testing::Test {
protected:
    DefaultMacroFixture(TaskKind kind, const char16_t* taskName)
        : m_kind(kind)
        , m_log(u"C:\\V\\Logs\\" + Text(taskName) + u"\\{6D1A7B52-0C8E-4E0B-9F6C-0123456789AB}.log")
    {
        host.root = u"C:\\V";
        for (const auto& [name, value] : initialVariables(kind, taskName))
            host.taskVariables[name] = value;
        cad.answer("Application.Zentrel", Value(cad.object(u"App")));
        cad.answer("App.GetOpenDocSpec", Value(cad.object(u"Spec")));
        cad.answer("Spec.Error", 0);
        cad.answer("App.OpenDoc7", Value(cad.object(u"Model")));
        cad.answer("Model.Extension", Value(cad.object(u"Extension")));
        cad.answer("Model.GetTitle", u"Title");
    }

    void set(const char16_t* name, Value value) { host.taskVariables[name] = std::move(value); }
    /// Runs the macro for a file and returns its log.
    std::string runMacro(const char16_t* file, const char16_t* item, const char16_t* version)
    {
        cad.calls.clear();
        MacroBuilder builder{platform.ports()};
        builder.Prepare(host.vault(), host.task(), defaultMacro(m_kind));
        builder.SetFile(file, item, 1, 2, 3);
        const FakeCadLibrary library;
        const language::CompileOptions options{&library, {{u"VBA7", true}}};
        const TemporaryFolder drive;
        FakeCadFiles files(cad, drive.path());
        FakeCadHost cadHost(cad, files);
        // As the CAD application reads it: from a file in the code page.
        language::Machine machine(
            language::compile(fromCodePage(toCodePage(builder.Build(version))), options), cadHost, files);
        machine.run(u"main");
        return readFile(files.machinePath(m_log));
    }
    Calls callsOf(const std::string& beginning) const
    {
        Calls calls;
        std::ranges::copy_if(
            cad.calls, std::back_inserter(calls), [&](const auto& c) { return c.starts_with(beginning); });
        return calls;
    }

    TestPlatform platform;
    FakeHost host;
    FakeCadApplication cad;

private:
    TaskKind m_kind;
    Text m_log;
};

} // namespace zn::test
