#include "addin/macro/MacroBuilder.h"
#include "addin/macro/MacroResources.h"
#include "addin/variables/TaskVariables.h"
#include "contracts/objectmodel/TypeLibrary.h"
#include "language/Program.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestPlatform.h"

#include <benchmark/benchmark.h>

/// Compiling a macro, which happens for each file of a run. The reference folds the case of the same text once, the
/// least that a reader of this language does.
namespace zn {

namespace {

/// The macro of one file, all values filled in.
Text conversionMacro()
{
    constexpr const char16_t* source = u"Z:\\vault\\projects\\pump\\housing.zenprt";
    test::TestPlatform platform;
    test::FakeHost host;
    for (const auto& [name, value] : initialVariables(TaskKind::Conversion, u"Convert"))
        host.taskVariables[name] = value;
    host.taskVariables[u"FileFormat"] = u"STL (*.stl)";
    host.taskVariables[u"OutputPath"] = u"<Path>\\stl\\<Filename>";
    host.addFile(1, 2, source);
    MacroBuilder builder{platform.ports()};
    builder.Prepare(host.vault(), host.task(), defaultMacro(TaskKind::Conversion));
    builder.SetFile(source, u"", 1, 2, 3);
    return builder.Build(u"zn2018");
}

/// Procedures of ten lines.
Text longMacro(std::int64_t lines)
{
    Text text;
    for (std::int64_t number = 0; number < lines / 10; ++number)
        text += u"Sub P" + numberText(number)
            + u"(ByVal name As String)\n"
              u"Dim i As Long, total As Double\n"
              u"For i = 1 To Len(name)\n"
              u"If Mid$(name, i, 1) = \"x\" Or Asc(name) > 64 Then\n"
              u"total = total + i * 2.5\n"
              u"End If\n"
              u"Next\n"
              u"Debug.Print name & vbCrLf & total\n"
              u"Application.SendMsgToUser name\n"
              u"End Sub\n";
    return text;
}

void CompileConversion(benchmark::State& state)
{
    const Text text = conversionMacro();
    const auto options = zentrel::macroCompileOptions();
    for (auto _ : state)
        benchmark::DoNotOptimize(language::compile(text, options));
}
BENCHMARK(CompileConversion)->Unit(benchmark::kMicrosecond);

void FoldConversion(benchmark::State& state)
{
    const Text text = conversionMacro();
    for (auto _ : state)
        benchmark::DoNotOptimize(foldCase(text));
}
BENCHMARK(FoldConversion)->Unit(benchmark::kMicrosecond);

void CompileLines(benchmark::State& state)
{
    const Text text = longMacro(state.range(0));
    const auto options = zentrel::macroCompileOptions();
    for (auto _ : state)
        benchmark::DoNotOptimize(language::compile(text, options));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(CompileLines)->Unit(benchmark::kMicrosecond)->RangeMultiplier(10)->Range(50, 50'000)->Complexity();

} // namespace

} // namespace zn
