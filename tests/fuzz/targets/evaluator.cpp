// A macro's run, without files and without an application, bounded in steps and memory: it ends, and a fault tells
// where and why.
#include "language/FileAccess.h"
#include "language/Machine.h"
#include "language/tree/Module.h"
#include "tests/fuzz/MemoryCap.h"
#include "tests/fuzz/Promise.h"
#include "tests/language/TestHost.h"

using namespace zn;
using namespace zn::language;
using fuzz::promise;

namespace {

/// An application that has nothing, and that wants the macro to end soon. The hour never changes.
class RefusingHost : public Host {
public:
    Value global(MemberCall& call) override { refuse(call.name); }
    DispatchRef createObject(const Text&) override { return nullptr; }
    Value callDeclared(DeclaredCall& call) override { refuse(call.entry); }
    void debugPrint(const Text&) override { }
    std::int32_t messageBox(const MessageBox&) override { return 2; }
    bool stopRequested() override { return ++m_asked > 20; }
    double now() override { return dayCount({2018, 3, 5, 14, 7, 9}); }

private:
    [[noreturn]] static void refuse(const Text& name) { throw StatusError(DISP_E_MEMBERNOTFOUND, toUtf8(name)); }

    int m_asked = 0;
};

/// A disk that lets nobody do anything.
class RefusingFiles : public FileAccess {
public:
    std::unique_ptr<OpenedFile> open(const Text&, FileMode) override { refuse(); }
    bool facts(const Text&, FileFacts&) override { return false; }
    void setAttributes(const Text&, std::uint32_t) override { refuse(); }
    std::vector<FolderEntry> list(const Text&) override { refuse(); }
    void remove(const Text&) override { refuse(); }
    void createFolder(const Text&) override { refuse(); }
    void removeFolder(const Text&) override { refuse(); }
    void rename(const Text&, const Text&) override { refuse(); }
    void copy(const Text&, const Text&) override { refuse(); }
    Text currentFolder() override { return u"C:\\"; }
    void setCurrentFolder(const Text&) override { refuse(); }
    Text temporaryFolder() override { return u"C:\\temp"; }

private:
    [[noreturn]] static void refuse() { throw StatusError(fileAccessDenied); }
};

constexpr std::size_t memoryHeld = std::size_t{2} << 20;
constexpr std::size_t memoryInTotal = std::size_t{128} << 20;

void run(const Program& program)
{
    RefusingHost host;
    RefusingFiles files;
    const fuzz::MemoryCap cap(memoryHeld, memoryInTotal);
    try {
        Machine machine(program, host, files);
        machine.run(program.hasProcedure(u"main") ? Text(u"main") : program.module().procedures.front().name);
    } catch (const RuntimeFault& fault) {
        const auto lines = static_cast<int>(program.module().lines.size());
        promise(!fault.description.empty(), "a fault has a description");
        promise(fault.line >= 0 && fault.line <= lines, "a fault stands inside the source");
    } catch (const std::bad_alloc&) {
        promise(cap.met(), "memory ends at the cap alone");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Text source = toText({reinterpret_cast<const char*>(data), size});
    const test::TestLibrary library;
    const CompileOptions options{&library, {{u"VBA7", Value(true)}}};
    try {
        const Program program = compile(source, options);
        if (!program.module().procedures.empty())
            run(program);
    } catch (const SyntaxError&) {
        return -1; // the parser's target keeps such sources
    }
    return 0;
}
