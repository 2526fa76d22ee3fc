#include "addin/files/FileLogic.h"
#include "base/Format.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestPlatform.h"

#include <benchmark/benchmark.h>

/// Lists and selections of 10,000 and 100,000 files: the time must grow with their number and no faster.
namespace zn {

namespace {

Text pathOf(std::int32_t number) { return formatText("Z:\\vault\\projects\\pump\\part %06d.zenprt", number); }

class Fixture {
public:
    explicit Fixture(std::int32_t count)
    {
        host.root = u"Z:\\vault";
        for (std::int32_t id = 1; id <= count; ++id) {
            host.addFile(id, 1, pathOf(id), 3);
            items.push_back({id, 1, pathOf(id), u"", ArkItemType::File, 0});
        }
        logic.Initialize(vault, TaskKind::Conversion, false);
    }

    void expand(bool fetch)
    {
        selection.clear();
        host.calls.clear();
        logic.ExpandSelection(*vault, task, items, selection, fetch);
    }

    test::TestPlatform platform;
    test::FakeHost host;
    ArkSelection items;
    SelectionRecords selection;
    Platform ports = platform.ports();
    FileLogic logic{ports};
    std::shared_ptr<IArkVault> vault = host.vault();
    std::shared_ptr<IArkTaskInstance> task = host.task();
};

void WriteList(benchmark::State& state)
{
    Fixture fixture(static_cast<std::int32_t>(state.range(0)));
    fixture.expand(false);
    for (auto _ : state)
        fixture.logic.WriteList(fixture.task, TaskKind::Conversion, &fixture.selection);
}
BENCHMARK(WriteList)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void ReadList(benchmark::State& state)
{
    Fixture fixture(static_cast<std::int32_t>(state.range(0)));
    fixture.expand(false);
    fixture.logic.WriteList(fixture.task, TaskKind::Conversion, &fixture.selection);
    for (auto _ : state)
        benchmark::DoNotOptimize(fixture.logic.ReadList(fixture.task, false));
}
BENCHMARK(ReadList)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void Expand(benchmark::State& state)
{
    Fixture fixture(static_cast<std::int32_t>(state.range(0)));
    for (auto _ : state)
        fixture.expand(true);
}
BENCHMARK(Expand)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void NoteSavedFiles(benchmark::State& state)
{
    Fixture fixture(1);
    const auto count = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state) {
        fixture.logic.Initialize(fixture.vault, TaskKind::Conversion, false);
        for (std::int32_t number = 0; number < count; ++number)
            fixture.logic.NoteSavedFile(pathOf(number + 10) + u".stl", u"Default", false);
        fixture.platform.pipe.messages.clear();
    }
}
BENCHMARK(NoteSavedFiles)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace zn
