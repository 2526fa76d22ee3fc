// The close-out of a run with many small outputs against copying and hashing the same files, and the questions that a
// run asks about a large selection.

#include "arkin/vault/VaultObject.h"
#include "contracts/host/ArkBatch.h"
#include "platform/Sha256.h"
#include "tests/arkin/VaultFixture.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <ctime>
#include <unistd.h>

namespace {

using namespace zn::arkin;
using namespace zn::arkin::test;
using zn::S_OK;

constexpr int outputs = 5000;
constexpr std::size_t outputSize = 8 * 1024;

double seconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// What this process has used of the processors; a busy machine blurs it less than the time.
double cpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

void must(bool good)
{
    if (!good)
        throw std::runtime_error("The benchmark's vault refused a step.");
}

std::string outputName(int i) { return "out/part " + std::to_string(i) + ".stl"; }

void writeOutputs(const TestVault& test, const std::string& salt)
{
    std::string content(outputSize, 'x');
    for (int i = 0; i < outputs; ++i) {
        const std::string mark = salt + std::to_string(i);
        content.replace(0, mark.size(), mark);
        writeFile(test.local(outputName(i)), content);
    }
}

void copyAndHash(const TestVault& test, const std::filesystem::path& target)
{
    std::filesystem::create_directories(target);
    for (int i = 0; i < outputs; ++i) {
        const std::string content = readFile(test.local(outputName(i)));
        zn::Sha256 hash;
        hash.update(content);
        benchmark::DoNotOptimize(hash.finish());
        std::ofstream(target / std::to_string(i), std::ios::binary) << content;
    }
}

template <class Utility> std::shared_ptr<Utility> utility(VaultObject& vault, zn::ArkUtility kind)
{
    zn::ObjectRef object;
    must(vault.CreateUtility(kind, object) == S_OK);
    return zn::query<Utility>(object);
}

std::vector<Place> addOutputs(TestVault& test, VaultObject& vault)
{
    const auto batch = utility<zn::IArkBatchAdd>(vault, zn::ArkUtil_BatchAdd);
    for (int i = 0; i < outputs; ++i)
        must(batch->AddFile(test.path(outputName(i)), test.path("out"), 0, nullptr, 0) == S_OK);
    std::vector<zn::ArkAddResult> results;
    std::int32_t count = outputs;
    must(batch->Commit(0, results, count) == S_OK && count == outputs);
    std::vector<Place> places;
    for (const zn::ArkAddResult& result : results)
        places.push_back({result.fileId, result.folderId});
    return places;
}

void fillCardsAndRefer(VaultObject& vault, const std::vector<Place>& places, std::int32_t variable, const Place& source)
{
    const auto cards = utility<zn::IArkBatchCardUpdate>(vault, zn::ArkUtil_BatchCardUpdate);
    const auto references = utility<zn::IArkBatchReference>(vault, zn::ArkUtil_BatchReference);
    for (const Place& place : places) {
        cards->SetVariable(place.fileId, variable, zn::Value(u"a title"), 0, 1);
        references->AddReferences(place.fileId, {source});
    }
    std::vector<zn::Status> errors;
    bool needsCommit = false;
    must(cards->Commit(errors, 0) == S_OK);
    must(references->CreateTree(0, needsCommit) == S_OK && references->Commit(needsCommit) == S_OK);
}

void checkInOutputs(VaultObject& vault, const std::vector<Place>& places)
{
    const auto batch = utility<zn::IArkBatchUnlock>(vault, zn::ArkUtil_BatchUnlock);
    std::int32_t count = 0;
    must(batch->SetComment(u"done") == S_OK && batch->AddSelection(vault, places) == S_OK
        && batch->CreateTree(0, 1, 0, count) == S_OK && batch->Unlock(0, 0) == S_OK && count == outputs);
}

void CloseOut(benchmark::State& state)
{
    for (auto _ : state) {
        zn::test::TemporaryFolder folder;
        TestVault test(folder.path());
        VaultObject vault(test.vault);
        const std::int32_t variable = test.vault.cards().addVariable(u"Title");
        const Place source = test.addReleased("source.zenprt", "a part");
        writeOutputs(test, "run ");
        sync();
        double cpuBefore = cpuSeconds();
        const double reference = seconds([&] { copyAndHash(test, folder / "copies"); });
        sync();
        const double referenceCpu = cpuSeconds() - cpuBefore;
        std::vector<Place> places;
        cpuBefore = cpuSeconds();
        const double add = seconds([&] { places = addOutputs(test, vault); });
        const double fill = seconds([&] { fillCardsAndRefer(vault, places, variable, source); });
        const double checkIn = seconds([&] { checkInOutputs(vault, places); });
        const double cpu = cpuSeconds() - cpuBefore;
        state.SetIterationTime(add + fill + checkIn);
        state.counters["copy_and_hash_s"] = reference;
        state.counters["add_s"] = add;
        state.counters["cards_references_s"] = fill;
        state.counters["check_in_s"] = checkIn;
        state.counters["cpu_ratio"] = cpu / referenceCpu;
        state.counters["ratio"] = (add + fill + checkIn) / reference;
    }
}
BENCHMARK(CloseOut)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// Fetch and version query of a selection with `range` files; the time for each file should not grow with it.
void FetchAndQuerySelection(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    zn::test::TemporaryFolder folder;
    TestVault test(folder.path());
    VaultObject vault(test.vault);
    writeFile(folder / "content", "x");
    std::vector<AddRequest> requests;
    for (int i = 0; i < count; ++i)
        requests.push_back({test.path("../content"), test.path("f" + std::to_string(i % 100)),
            zn::toText(std::to_string(i) + ".step")});
    std::vector<Place> places;
    for (const AddOutcome& outcome : addFiles(test.vault, requests))
        places.push_back(outcome.place);
    test.checkInAll(places);
    for (auto _ : state) {
        const auto fetch = utility<zn::IArkBatchFetch>(vault, zn::ArkUtil_BatchFetch);
        const auto query = utility<zn::IArkBatchQuery>(vault, zn::ArkUtil_BatchQuery);
        for (const Place& place : places)
            fetch->AddSelection(vault, place.fileId, place.folderId, 0);
        must(fetch->CreateTree(0, 0) == S_OK && fetch->GetFiles(0, 0) == S_OK);
        for (int i = 0; i < count; ++i)
            query->AddFile(zn::Value(
                test.path("f" + std::to_string(i % 100)) + u"\\" + requests[static_cast<std::size_t>(i)].name));
        std::vector<zn::ArkQueryRow> rows;
        must(query->GetRows(rows) == S_OK && rows.size() == places.size());
    }
    state.counters["us_per_file"]
        = benchmark::Counter(count / 1e6, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(FetchAndQuerySelection)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
