// The pages of a conversion task in a vault with many card variables, against one without any; and typing in a path
// box of such a vault.

#include "addin/pages/Pages.h"
#include "arkin/tasks/TaskProperties.h"
#include "arkin/vault/VaultObject.h"
#include "base/Format.h"
#include "tests/arkin/VaultFixture.h"
#include "tests/support/InstalledPlatform.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <QApplication>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {

using namespace zn::arkin;

constexpr int manyVariables = 5'000;

void start()
{
    static int count = 1;
    static char name[] = "bench";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!qApp)
        new QApplication(count, arguments); // until the process ends
}

double milliseconds(const std::function<void()>& work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// A vault with so many card variables, and a task for its pages.
struct VaultWithVariables {
    explicit VaultWithVariables(int variables)
        : test(platform.folder.path())
        , vault(std::make_shared<VaultObject>(test.vault))
        , tasks(test.store.database(), test.vault.info().id)
        , pages(ports)
    {
        for (int i = 0; i < variables; ++i)
            test.vault.cards().addVariable(zn::formatText("%c_Value_%04d", 'A' + i % 26, i));
        TaskDefinition definition;
        definition.name = u"Nightly";
        tasks.create(definition);
    }

    zn::PageSetting setting(QWidget& host)
    {
        return {vault, std::make_shared<TaskProperties>(tasks.get(u"Nightly")), zn::TaskKind::Conversion,
            static_cast<std::int32_t>(host.winId())};
    }

    zn::test::InstalledPlatform platform;
    zn::Platform ports = platform.ports();
    test::TestVault test;
    std::shared_ptr<VaultObject> vault;
    TaskStore tasks;
    zn::Pages pages;
};

/// The pages of a property dialog, each shown once as a person leafs through them.
struct OpenPages {
    explicit OpenPages(VaultWithVariables& vault)
    {
        const zn::PageSetting setting = vault.setting(host);
        auto* rows = new QVBoxLayout(&host);
        host.show();
        const auto open = [&](zn::TaskPage& page) {
            page.load(setting.task);
            QWidget* widget = QWidget::find(static_cast<WId>(page.window()));
            rows->addWidget(widget);
            widget->show();
            QApplication::processEvents();
            shown = widget;
        };
        menu = vault.pages.makeMenuCommandPage(setting);
        open(*menu);
        shown->hide();
        conversion = vault.pages.makeConversionPage(setting, false);
        open(*conversion);
        shown->hide();
        card = vault.pages.makePage(zn::PageName::FileCard, setting);
        open(*card);
        shown->hide();
        output = vault.pages.makeOutputFileDetailsPage(setting, *conversion);
        open(*output);
    }

    QWidget host;
    std::unique_ptr<zn::MenuCommandPage> menu;
    std::unique_ptr<zn::ConversionPage> conversion;
    std::unique_ptr<zn::TaskPage> card;
    std::unique_ptr<zn::TaskPage> output;
    QWidget* shown = nullptr;
};

void OpeningPages(benchmark::State& state)
{
    start();
    VaultWithVariables none(0);
    VaultWithVariables many(manyVariables);
    OpenPages first(none); // libraries, fonts and pictures are loaded once, whatever the vault holds
    constexpr int rounds = 21;
    for (auto _ : state) {
        std::vector<double> without, with;
        for (int i = 0; i < rounds; ++i) {
            without.push_back(milliseconds([&] { const OpenPages pages(none); }));
            with.push_back(milliseconds([&] { const OpenPages pages(many); }));
        }
        state.SetIterationTime(median(with) / 1000);
        state.counters["without_ms"] = median(without);
        state.counters["with_ms"] = median(with);
        state.counters["ratio"] = median(with) / median(without);
    }
}
BENCHMARK(OpeningPages)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void TypingAPath(benchmark::State& state)
{
    start();
    VaultWithVariables vault(static_cast<int>(state.range(0)));
    const OpenPages pages(vault);
    auto* edit = pages.shown->findChild<QWidget*>("outputPath")->findChild<QTextEdit*>();
    edit->setFocus();
    const QString path = "<VaultPath>\\%C_Value_0002%\\%D_Value_4995%_%No_Such_Value%_<Filename>_100%_<Today>";
    for (auto _ : state) {
        edit->selectAll();
        const double taken = milliseconds([&] {
            for (const QChar key : path) {
                QTest::keyClick(edit, key.toLatin1());
                QApplication::processEvents(); // the box and its example are painted
            }
        });
        state.SetIterationTime(taken / 1000);
        state.counters["ms_a_key"] = taken / static_cast<double>(path.size());
    }
}
BENCHMARK(TypingAPath)->Arg(0)->Arg(manyVariables)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace
