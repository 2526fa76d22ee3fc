// The print dialog over many references, from the call until it stands painted, against the one database query that
// feeds it.

#include "addin/pages/Pages.h"
#include "arkin/reftree/RefTreeRegistration.h"
#include "arkin/store/ReferenceClosure.h"
#include "arkin/tasks/LaunchInstance.h"
#include "arkin/vault/VaultObject.h"
#include "tests/arkin/VaultFixture.h"
#include "tests/support/InstalledPlatform.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <QApplication>
#include <QDialog>
#include <QTimer>

namespace {

using namespace zn::arkin;

constexpr int references = 10'000;
constexpr int foldersOfParts = 50;

double milliseconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void start()
{
    static int count = 1;
    static char name[] = "bench";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!qApp)
        new QApplication(count, arguments); // until the process ends
}

/// An assembly of assemblies with so many parts each: `references` files that it refers to, directly or not.
Place makeAssembly(test::TestVault& test, int partsOfAssembly)
{
    test::writeFile(test.local("../content"), "x");
    std::vector<AddRequest> requests;
    for (int i = 0; i < references; ++i) {
        const bool isAssembly = i % (partsOfAssembly + 1) == 0;
        requests.push_back({test.path("../content"), test.path("f" + std::to_string(i % foldersOfParts)),
            zn::toText((isAssembly ? "sub " : "part ") + std::to_string(i) + (isAssembly ? ".zenasm" : ".zenprt"))});
    }
    std::vector<Place> places;
    for (const AddOutcome& outcome : addFiles(test.vault, requests))
        places.push_back(outcome.place);
    const Place top = test.add("top.zenasm", "top").place;
    std::vector<NewReference> made;
    for (int i = 0; i < references; ++i) {
        const int assembly = i - i % (partsOfAssembly + 1);
        const auto at = static_cast<std::size_t>(i);
        made.push_back({i == assembly ? top.fileId : places[static_cast<std::size_t>(assembly)].fileId, places[at]});
    }
    addReferences(test.vault, made);
    places.push_back(top);
    test.checkInAll(places);
    return top;
}

/// Opens the dialog as a user meets it and closes it once it stands there.
double openDialog(zn::Pages& pages, const std::shared_ptr<VaultObject>& vault, zn::ArkSelection selection)
{
    zn::ArkCmd cmd;
    TaskDefinition task;
    task.variables[u"__printer_autoselectrefstype"] = 3; // everything is ticked, and so the whole tree stands open
    cmd.taskObject = std::make_shared<LaunchInstance>(task, RunSetting{});
    const auto begin = std::chrono::steady_clock::now();
    double taken = -1;
    QTimer::singleShot(0, qApp, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        QApplication::processEvents();
        taken = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
        dialog->reject();
    });
    pages.showPrintDialog(vault, &cmd, selection, true);
    return taken;
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void PrintDialog(benchmark::State& state)
{
    start();
    zn::test::InstalledPlatform platform;
    const zn::Platform ports = platform.ports();
    registerRefTree(
        ports.registry, platform.machine.files().fromMachine(std::string(ZN_BIN_DIR) + "/libarkin-reftree.so"));
    test::TestVault test(platform.folder.path());
    const auto vault = std::make_shared<VaultObject>(test.vault);
    zn::Pages pages(ports);
    const Place top = makeAssembly(test, static_cast<int>(state.range(0)));
    const Place small = test.addReleased("small.zenprt", "small");
    const ClosureStart begin{top.fileId, top.folderId, 0};
    // What a process loads once, libraries and fonts, is no matter of the number of files.
    openDialog(pages, vault, {{small.fileId, small.folderId, u"", u"", zn::ArkItemType::File, 0}});
    constexpr int rounds = 5;
    for (auto _ : state) {
        std::vector<double> queries, dialogs;
        for (int i = 0; i < rounds; ++i) {
            queries.push_back(milliseconds([&] { readReferenceClosure(test.vault, {&begin, 1}, true); }));
            dialogs.push_back(
                openDialog(pages, vault, {{top.fileId, top.folderId, u"", u"", zn::ArkItemType::File, 0}}));
        }
        state.SetIterationTime(median(dialogs) / 1000);
        state.counters["query_ms"] = median(queries);
        state.counters["dialog_ms"] = median(dialogs);
        state.counters["ratio"] = median(dialogs) / median(queries);
    }
}
BENCHMARK(PrintDialog)->Arg(100)->Arg(references)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
