// The search over 1,000,000 names and cards. Wanted: below 100 ms.

#include "arkin/store/FolderListing.h"
#include "arkin/store/SearchIndex.h"
#include "tests/arkin/VaultFixture.h"

#include <benchmark/benchmark.h>
#include <soci/soci.h>

namespace {

using namespace zn::arkin;

constexpr int manyFiles = 1'000'000;

void insertNumbered(soci::session& session, const std::string& into, const std::string& values)
{
    session << "WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(manyFiles)
            + ") INSERT INTO " + into + " SELECT " + values + " FROM n";
}

/// Names like "Flange 000123-45.step" with a title and a number of an order on each card.
struct MillionFiles {
    MillionFiles()
        : vault(folder.path())
    {
        vault.vault.cards().addVariable(u"Title");
        vault.vault.cards().addVariable(u"Order");
        const Place first = vault.addReleased("Parts/first.step", "first");
        const std::string parts = std::to_string(first.folderId);
        Transaction writing(vault.store.database());
        auto& session = vault.store.database().session();
        const std::string kind
            = "CASE i % 7 WHEN 0 THEN 'Flange' WHEN 1 THEN 'Housing' WHEN 2 THEN 'Shaft' WHEN 3 THEN 'Cover' WHEN 4 "
              "THEN 'Bracket' WHEN 5 THEN 'Sealing ring' ELSE 'Plate' END";
        const std::string name = kind + " || ' ' || printf('%07d', i) || '-' || (i % 100) || '.step'";
        insertNumbered(session, "files (id, vault_id, name, latest_version, deleted_at, deleted_by)",
            "i, " + std::to_string(vault.vault.info().id) + ", " + name + ", 1, 0, ''");
        insertNumbered(session, "file_folders (folder_id, name_key, file_id)", parts + ", lower(" + name + "), i");
        insertNumbered(session,
            "versions (file_id, version, content, content_size, comment_text, user_name, made_at, revision, state)",
            "i, 1, 'x', i, 'Added', 'anna', i, '', 'In Work'");
        const char* const card = "card_values (file_id, version, variable_id, configuration, value_type, value_text)";
        insertNumbered(session, card, "i, 1, 1, '@', 8, 'Pump station ' || (i % 5000) || ', drive side'");
        insertNumbered(session, card, "i, 1, 2, '@', 8, 'A' || (i * 7919 % 1000003)");
        writing.commit();
    }
    zn::test::TemporaryFolder folder;
    test::TestVault vault;
};

MillionFiles& million()
{
    static MillionFiles* const vault = new MillionFiles;
    return *vault;
}

SearchIndex& index()
{
    static SearchIndex* const made = new SearchIndex(million().vault.vault, million().folder / "search");
    made->catchUp();
    return *made;
}

void IndexOfAMillionFiles(benchmark::State& state)
{
    for (auto _ : state) {
        SearchIndex fresh(million().vault.vault, million().folder / "fresh");
        fresh.catchUp();
        state.PauseTiming();
        state.counters["MB"]
            = static_cast<double>(std::filesystem::file_size(million().folder / "fresh/search-1.sqlite")) / 1e6;
        removeSearchIndexes(million().folder / "fresh");
        state.ResumeTiming();
    }
}
BENCHMARK(IndexOfAMillionFiles)->Unit(benchmark::kSecond)->Iterations(1);

/// As the window asks: the first thousand, with all that a row shows.
void SearchOfAMillion(benchmark::State& state, const char16_t* words)
{
    SearchIndex& all = index();
    std::size_t found = 0;
    for (auto _ : state) {
        all.catchUp();
        found = listFiles(million().vault.vault, all.find(words, 1000)).size();
    }
    state.counters["found"] = static_cast<double>(found);
}
BENCHMARK_CAPTURE(SearchOfAMillion, one_file, u"0423456-56")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SearchOfAMillion, name_and_card, u"flange station 4711")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SearchOfAMillion, every_file, u"step")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SearchOfAMillion, order, u"a77123")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SearchOfAMillion, two_common_words, u"bracket drive")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SearchOfAMillion, two_letters, u"zq")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SearchOfAMillion, nothing, u"nowhere at all")->Unit(benchmark::kMillisecond);

/// The same question by reading all rows.
void FindByReadingAMillion(benchmark::State& state)
{
    Vault& vault = million().vault.vault;
    FileQuery query;
    query.folderId = vault.folders().rootId();
    query.name = u"0423456-56";
    for (auto _ : state)
        benchmark::DoNotOptimize(findFiles(vault, query));
}
BENCHMARK(FindByReadingAMillion)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
