#include "language/Machine.h"
#include "language/Reason.h"
#include "tests/language/DiskFiles.h"
#include "tests/language/TestHost.h"
#include "tests/support/Files.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace zn::test {
namespace {

using namespace language;
using testing::ElementsAre;

class HostInterplay : public testing::Test {
protected:
    Program compiled(TextView source)
    {
        const TestLibrary library;
        return compile(source, {&library, {}});
    }

    RuntimeFault faultOf(TextView source)
    {
        Machine machine(compiled(source), host, files);
        return faultOf(machine);
    }
    static RuntimeFault faultOf(Machine& machine)
    {
        try {
            machine.run(u"main");
        } catch (const RuntimeFault& fault) {
            return fault;
        }
        return RuntimeFault(FaultKind::RuntimeError, 0, u"none");
    }

    TemporaryFolder folder;
    TestHost host;
    DiskFiles files{folder.path()};
};

TEST_F(HostInterplay, RunsAProcedureWithArgumentsAndKeepsModuleVariablesBetweenRuns)
{
    Machine machine(compiled(u"Dim total As Long\r\n"
                             u"Function Add(n As Long, Optional times As Long = 2) As String\r\n"
                             u"  total = total + n * times\r\n"
                             u"  Add = \"total \" & total\r\n"
                             u"End Function\r\n"),
        host, files);
    EXPECT_EQ(machine.run(u"ADD", {Value(std::int32_t(3))}), Value(u"total 6"));
    EXPECT_EQ(machine.run(u"add", {Value(u"4"), Value(std::int16_t(1))}), Value(u"total 10"));
}

TEST_F(HostInterplay, PropertiesAndResultsReachTheObjectAsTheMacroWroteThem)
{
    Machine machine(compiled(u"Sub main()\n"
                             u"  Dim list(1) As Double\n"
                             u"  list(1) = 2.5\n"
                             u"  Application.Options = list\n"
                             u"  list(1) = 0\n"
                             u"  Application.Kind = znDocDRAWING\n"
                             u"  Application.Visible = True\n"
                             u"End Sub\n"),
        host, files);
    machine.run(u"main");
    const auto& properties = host.application->properties;
    const auto* list = properties.at(u"options").get<ArrayRef>();
    ASSERT_TRUE(list);
    EXPECT_EQ((*list)->elementType, ValueType::Float64);
    EXPECT_EQ((*list)->elements[1], Value(2.5)) << "The object shares the macro's array.";
    EXPECT_EQ(properties.at(u"kind"), Value(std::int32_t(3)));
    EXPECT_EQ(properties.at(u"visible"), Value(true));
}

TEST_F(HostInterplay, FaultsTellWhereAndMapToReasonCodes)
{
    struct Case {
        TextView source;
        FaultKind kind;
        int line;
        Reason reason;
    };
    const Case cases[] = {
        {u"Sub other()\nEnd Sub", FaultKind::MissingProcedure, 0, Reason::InvalidProcedureName},
        {u"Sub main(a)\nEnd Sub", FaultKind::ParameterCount, 0, Reason::InvalidParameterCount},
        {u"Sub main()\nDim i As Integer\ni = 40000\nEnd Sub", FaultKind::RuntimeError, 3, Reason::Overflow},
        {u"Sub main()\nx = 1 + \"a\"\nEnd Sub", FaultKind::RuntimeError, 2, Reason::TypeMismatch},
        {u"Sub main()\nx = Array(1)(5)\nEnd Sub", FaultKind::RuntimeError, 2, Reason::InvalidIndex},
        {u"Sub main()\nApplication.NoSuch\nEnd Sub", FaultKind::RuntimeError, 2, Reason::ProcedureExpected},
        {u"Sub main()\nApplication.Fail\nEnd Sub", FaultKind::RuntimeError, 2, Reason::UnhandledException},
        {u"Sub main()\nOpen \"C:\\none\" For Input As 1\nEnd Sub", FaultKind::RuntimeError, 2, Reason::OpenFailed},
        {u"Sub main()\nmain\nEnd Sub", FaultKind::RuntimeError, 2, Reason::OutOfMemory},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(toUtf8(c.source));
        const RuntimeFault fault = faultOf(c.source);
        EXPECT_EQ(fault.kind, c.kind);
        EXPECT_EQ(fault.line, c.line);
        EXPECT_EQ(reasonOf(fault), c.reason);
    }
    const RuntimeFault fault = faultOf(u"Sub main()\r\n  Application.Fail\r\nEnd Sub");
    EXPECT_EQ(fault.sourceLine, u"  Application.Fail");
    EXPECT_EQ(fault.procedure, u"main");
    EXPECT_EQ(fault.number, statusCode(0x80004005));
    EXPECT_STREQ(fault.what(), "The document is locked");
}

TEST_F(HostInterplay, CompileErrorsMapToReasonCodes)
{
    const std::pair<TextView, Reason> cases[] = {
        {u"Sub main()\nMissing 1\nEnd Sub", Reason::ProcedureExpected},
        {u"Sub main()\nDim a As NoType\nEnd Sub", Reason::InvalidVariableType},
        {u"Sub main()\nx = Left(1)\nEnd Sub", Reason::ParameterMissing},
        {u"Sub main()\nx = \nEnd Sub", Reason::CallFailed},
    };
    for (const auto& [source, reason] : cases) {
        try {
            compiled(source);
            ADD_FAILURE() << toUtf8(source);
        } catch (const SyntaxError& failure) {
            EXPECT_EQ(failure.line(), 2);
            EXPECT_EQ(reasonOf(failure), reason) << failure.what();
        }
    }
}

TEST_F(HostInterplay, AnEndlessLoopEndsWhenTheHostAsksAndNoHandlerStopsThat)
{
    host.stopAfter = 3;
    const RuntimeFault fault = faultOf(u"Sub main()\nOn Error Resume Next\nDo: x = x + 1: Loop\nEnd Sub");
    EXPECT_EQ(fault.kind, FaultKind::Interrupted);
    EXPECT_EQ(fault.line, 3);
    EXPECT_EQ(reasonOf(fault), Reason::Interrupted);
}

TEST_F(HostInterplay, FilesLeftOpenAreWrittenWhateverTheEnd)
{
    faultOf(u"Sub main()\nOpen \"C:\\a.txt\" For Output As #1\nPrint #1, \"kept \"; ChrW(8217)\nx = 1 \\ 0\nEnd Sub");
    EXPECT_EQ(readFile(folder / "a.txt"), "kept \x92\r\n");
    Machine machine(
        compiled(u"Sub main()\nOpen \"C:\\b.txt\" For Output As #1\nPrint #1, \"b\"\nEnd\nEnd Sub"), host, files);
    machine.run(u"main");
    EXPECT_EQ(readFile(folder / "b.txt"), "b\r\n");
}

/// A disk that has no room when a file is closed.
class FullDisk : public DiskFiles {
public:
    using DiskFiles::DiskFiles;
    std::unique_ptr<OpenedFile> open(const Text& path, FileMode mode) override
    {
        class Full : public OpenedFile {
        public:
            std::size_t read(char*, std::size_t) override { return 0; }
            void write(std::string_view) override { throw StatusError(deviceFull); }
            void seek(std::uint64_t) override { }
            std::uint64_t position() override { return 0; }
            std::uint64_t size() override { return 0; }
            void close() override { }
        };
        DiskFiles::open(path, mode);
        return std::make_unique<Full>();
    }
};

TEST_F(HostInterplay, AFullDiskIsToldAtTheLatestWhenTheMacroEnds)
{
    FullDisk full(folder.path());
    Machine handled(compiled(u"Sub main()\nOn Error GoTo Fail\nOpen \"C:\\a\" For Output As #1\nPrint #1, 1\nClose #1\n"
                             u"Exit Sub\nFail:\nDebug.Print Err.Number\nEnd Sub"),
        host, full);
    handled.run(u"main");
    EXPECT_THAT(host.lines, ElementsAre(u" 61 "));
    Machine left(compiled(u"Sub main()\nOpen \"C:\\a\" For Output As #1\nPrint #1, 1\nEnd Sub"), host, full);
    const RuntimeFault fault = faultOf(left);
    EXPECT_EQ(fault.number, 61);
    EXPECT_EQ(reasonOf(fault), Reason::SaveFailed);
}

TEST_F(HostInterplay, AMacroMayRunAnotherThroughItsHostAndBothShareTheStack)
{
    class Nesting : public TestHost {
    public:
        explicit Nesting(FileAccess& access)
            : m_files(access)
        {
        }
        Value global(MemberCall&) override
        {
            const TestLibrary library;
            Machine machine(
                compile(u"Function main()\nmain = Application\nEnd Function", {&library, {}}), *this, m_files);
            ++depth;
            return machine.run(u"main");
        }
        int depth = 0;

    private:
        FileAccess& m_files;
    } nesting(files);
    Machine machine(compiled(u"Sub main()\nOn Error Resume Next\nx = Application\nEnd Sub"), nesting, files);
    try {
        machine.run(u"main");
    } catch (const RuntimeFault&) {
        // The inner machines' fault is the host's failure, not the outer macro's error.
    }
    EXPECT_GT(nesting.depth, 100);
}

TEST(Compiling, LineEndsOfAllKindsCountAlike)
{
    for (const TextView end : {u"\r\n", u"\n", u"\r"}) {
        Text source = u"Sub main()|x = _| 1 +|End Sub";
        replaceAll(source, u"|", end);
        const auto errors = check(source);
        ASSERT_EQ(errors.size(), 1u);
        EXPECT_EQ(errors[0].line, 3);
        EXPECT_EQ(errors[0].column, 5);
        EXPECT_EQ(errors[0].sourceLine, u" 1 +");
    }
}

} // namespace
} // namespace zn::test
