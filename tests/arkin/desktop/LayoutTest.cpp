#include "arkin/desktop/BrowseDialog.h"
#include "arkin/desktop/DetailsWindow.h"
#include "arkin/desktop/explorer/CompareDialog.h"
#include "arkin/desktop/explorer/ExplorerWindow.h"
#include "arkin/desktop/LaunchDialog.h"
#include "arkin/desktop/monitor/MonitorWindow.h"
#include "arkin/desktop/monitor/ScheduleDialog.h"
#include "arkin/desktop/monitor/StopQuestion.h"
#include "arkin/desktop/PropertyDialog.h"
#include "arkin/tasks/RunClaim.h"
#include "arkin/tasks/WorkerStore.h"
#include "tests/arkin/desktop/DesktopFixture.h"
#include "tests/support/windows/LayoutCheck.h"

#include <fstream>
#include <QListWidget>
#include <QSettings>
#include <QTabWidget>
#include <QTreeView>

namespace zn::arkin::test {

namespace {

/// What a window's frame may take of a screen of 1280 x 720 pixels.
constexpr QSize smallScreen(1280 - 16, 720 - 40);

/// English, with words of ordinary length behind each text until it is 40 percent longer.
Language longTexts(const std::filesystem::path& folder)
{
    constexpr std::string_view filler = " weitere lange Worte dazu und noch mehr davon bis es reicht";
    std::filesystem::create_directories(folder / "XX");
    std::ofstream file(folder / "XX" / "Arkin.lan");
    file << "LanFile 1\n";
    for (const WindowText& text : windowTexts()) {
        const std::string_view english = text.english;
        file << '[' << text.context << "]\n" << text.number << " = " << english;
        for (std::size_t i = 0; i < (english.size() * 4 + 9) / 10; ++i)
            file << filler[i % filler.size()];
        file << ".\n";
    }
    return {"XX", folder};
}

} // namespace

/// Every window of the host, filled.
class LayoutTest : public DesktopFixture {
protected:
    LayoutTest()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(folder.path()));
        host.opened = &vault.vault;
        for (const auto* name : {"Parts/arm with a rather long name.zenprt", "Parts/Bolt.step", "top.step"})
            vault.addReleased(name, name);
        vault.change(*vault.vault.find(vault.path("top.step")), "top.step", "another");
        runs.enqueue(task, {newGuid(), u"anna", oneFile, {}}, vault.clock.now());
        const ProcessMark elsewhere{u"workshop", 5, 5};
        workers.enter(u"anna", elsewhere, vault.clock.now());
        RunClaim::takeNext(runs, elsewhere, vault.clock.now())->writeProgress(40, 12, u"Z:\\V\\arm.step");
    }

    /// Calls back with each window while it is shown.
    void eachWindow(const std::function<void(const std::string& name, QWidget& window)>& look)
    {
        const DailyHost daily{host, folder / "cache", {}, {}};
        MonitorWindow monitor(daily);
        monitor.choose(1);
        auto& tabs = *find<QTabWidget>(monitor, "monitorTabs");
        for (int tab = 0; tab < tabs.count(); ++tab) {
            tabs.setCurrentIndex(tab);
            look("monitor " + std::to_string(tab), monitor);
        }
        ExplorerWindow explorer(daily, 0);
        auto& details = *find<QTabWidget>(explorer, "fileDetails");
        find<QTreeView>(explorer, "files")->selectAll(); // one file: what is known of it shows
        for (int tab = 0; tab < details.count(); ++tab) {
            details.setCurrentIndex(tab);
            look("explorer " + std::to_string(tab), explorer);
        }
        const Place changed = *vault.vault.find(vault.path("top.step"));
        CompareDialog compare(daily, changed, 1, 2);
        look("compare", compare);
        TaskSetup setup(host, task);
        PropertyDialog properties(setup);
        find<QListWidget>(properties, "pageTitles")->setCurrentRow(2);
        look("properties", properties);
        TaskDetails opened(host, 1);
        DetailsWindow runDetails(opened);
        look("details", runDetails);
        BrowseDialog browser(*object, "Select Files", {{u"All files", {}}}, true, nullptr);
        look("browser", browser);
        ScheduleDialog schedule(daily);
        look("schedule", schedule);
        eachQuestion(look);
    }
    void eachQuestion(const std::function<void(const std::string& name, QWidget& window)>& look)
    {
        const auto shown = [&](const char* name) {
            return [&look, name](QWidget& window) {
                look(name, window);
                static_cast<QDialog&>(window).reject();
            };
        };
        const Answers answers({shown("launch"), shown("stop")});
        LaunchFlow flow(host, task, oneFile);
        LaunchDialog(flow).run();
        WorkerInfo here = workers.get(1);
        here.process = thisProcess();
        askWhenToStop(nullptr, here);
    }

    const zn::ArkSelection oneFile{{1, 2, u"Z:\\a.step", {}, zn::ArkItemType::File, 1}};
    const TaskDefinition task = define({{u"Plan", Value(u"ask")}});
    RunStore runs{vault.store.database(), host.vaultId};
    WorkerStore workers{vault.store.database(), host.vaultId};
    const Language languages[3]{{}, {"DE", ZN_SOURCE_DIR "/resources/LanFiles"}, longTexts(folder.path())};
};

TEST_F(LayoutTest, ShowsEveryControlWholeInEnglishGermanAndWithLongTexts)
{
    for (const Language& language : languages) {
        const HostDesktop desktop({"offscreen", {}}, true, language);
        eachWindow([&](const std::string& name, QWidget& window) {
            window.show();
            QApplication::processEvents();
            EXPECT_THAT(zn::test::layoutFaults(window), ::testing::IsEmpty()) << name << " in " << language.code;
        });
    }
}

TEST_F(LayoutTest, FitsASmallScreenAtTwiceTheSize)
{
    const QFont font = QApplication::font();
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * 2);
    QApplication::setFont(large);
    for (const Language& language : languages) {
        const HostDesktop desktop({"offscreen", {}}, true, language);
        eachWindow([&](const std::string& name, QWidget& window) {
            window.show();
            window.resize(smallScreen);
            QApplication::processEvents();
            EXPECT_LE(window.width(), smallScreen.width()) << name << " in " << language.code;
            EXPECT_LE(window.height(), smallScreen.height()) << name << " in " << language.code;
            EXPECT_THAT(zn::test::layoutFaults(window), ::testing::IsEmpty()) << name << " in " << language.code;
        });
    }
    QApplication::setFont(font);
}

} // namespace zn::arkin::test
