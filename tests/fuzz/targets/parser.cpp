// Checking and compiling a macro: errors lie inside the source, and both find the same first one.
#include "language/Program.h"
#include "tests/fuzz/Promise.h"
#include "tests/language/TestHost.h"

using namespace zn;
using namespace zn::language;
using fuzz::promise;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Text source = toText({reinterpret_cast<const char*>(data), size});
    const test::TestLibrary library;
    const CompileOptions options{&library, {{u"VBA7", Value(true)}}};
    const auto lines = static_cast<int>(split(source, u'\n').size() + split(source, u'\r').size());
    const auto errors = check(source, options);
    for (const Diagnostic& error : errors) {
        promise(error.line >= 1 && error.line <= lines && error.column >= 1, "an error stands inside the source");
        promise(!error.message.empty(), "an error has a message");
    }
    try {
        compile(source, options);
        promise(errors.empty(), "a source with errors doesn't compile");
    } catch (const SyntaxError& error) {
        promise(!errors.empty() && error.message() == errors.front().message && error.line() == errors.front().line
                && error.column() == errors.front().column,
            "compiling raises the first error that checking tells");
    }
    return 0;
}
