#include "addin/macro/MacroBuilder.h"
#include "addin/macro/MacroResources.h"
#include "addin/macro/MacroText.h"
#include "addin/variables/TaskVariables.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestPlatform.h"

#include <benchmark/benchmark.h>

/// `Build` with the default conversion macro against twelve plain replace passes over the same text.
namespace zn {

namespace {

constexpr const char16_t* sourcePath = u"Z:\\vault\\projects\\pump\\housing.zenprt";

/// A run of a conversion task as its pages leave it, with one card variable in the output path.
class Fixture {
public:
    Fixture()
    {
        for (const auto& [name, value] : initialVariables(TaskKind::Conversion, u"Convert"))
            host.taskVariables[name] = value;
        host.taskVariables[u"FileFormat"] = u"STL (*.stl)";
        host.taskVariables[u"OutputPath"] = u"<Path>\\stl\\<Filename>_%Number%";
        host.taskVariables[u"UsedVariables"] = u"Number";
        host.cardVariables = {u"Number"};
        host.addFile(1, 2, sourcePath).card[{u"Number", u"@"}] = u"P-100";
        builder.Prepare(host.vault(), host.task(), defaultMacro(TaskKind::Conversion));
        builder.SetFile(sourcePath, u"", 1, 2, 3);
    }

    test::TestPlatform platform;
    test::FakeHost host;
    MacroBuilder builder{platform.ports()};
};

void Build(benchmark::State& state)
{
    Fixture fixture;
    for (auto _ : state)
        benchmark::DoNotOptimize(fixture.builder.Build(u"zn2018"));
}
BENCHMARK(Build);

void TwelvePasses(benchmark::State& state)
{
    Fixture fixture;
    const std::pair<const char16_t*, const char16_t*> values[]
        = {{u"<Filepath>", sourcePath}, {u"<Path>", u"Z:\\vault\\projects\\pump"}, {u"<VaultPath>", u"Z:\\vault"},
            {u"<TaskInstanceGuid>", u"{6D1A7B52-0C8E-4E0B-9F6C-0123456789AB}"}, {u"<SelCfgOrSheet>", u""},
            {u"<Revision>", u""}, {u"<Version>", u"3"}, {u"<WorkflowState>", u""}, {u"<Today>", u"Mar 05 2018"},
            {u"<Supported_2017ZN>", u"True"}, {u"<Supported_2018ZN>", u"True"}, {u"%Number%", u"P-100"}};
    Text prepared = defaultMacro(TaskKind::Conversion);
    for (const auto& [name, value] : fixture.host.taskVariables)
        replaceAll(prepared, u"[" + name + u"]", EncodeForMacroString(ValueToMacroText(value)));
    for (auto _ : state) {
        Text text = prepared;
        for (const auto& [token, value] : values)
            replaceAll(text, token, value);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(TwelvePasses);

} // namespace

} // namespace zn
