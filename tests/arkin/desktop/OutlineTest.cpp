#include "tests/support/windows/Outline.h"
#include "arkin/desktop/BrowseDialog.h"
#include "arkin/desktop/DetailsWindow.h"
#include "arkin/desktop/LaunchDialog.h"
#include "arkin/desktop/monitor/MonitorWindow.h"
#include "arkin/desktop/monitor/ScheduleDialog.h"
#include "arkin/desktop/PropertyDialog.h"
#include "arkin/tasks/RunStore.h"
#include "tests/arkin/desktop/DesktopFixture.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSettings>
#include <QTabWidget>
#include <QTreeView>
#include <soci/soci.h>

namespace zn::arkin::test {

class OutlineTest : public DesktopFixture {
protected:
    OutlineTest()
    {
        host.opened = &vault.vault;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(folder.path()));
        for (const auto* name : {"Parts/b.ZENPRT", "Parts/a.zenprt", "Parts/note", "top.step"})
            vault.addReleased(name, name);
        RunStore(vault.store.database(), host.vaultId).enqueue(task, {newGuid(), u"anna", oneFile, {}}, 1);
        auto& session = vault.store.database().session();
        session << "UPDATE task_runs SET state = 7, outputs_expected = 40, outputs_missing = 1";
        session << "INSERT INTO task_run_messages (run_id, position, path, sentence) VALUES "
                   "(1, 0, 'Z:\\V\\a.step', 'It is damaged.')";
    }

    /// Adds what the window shows to the text of that name.
    void note(const char* name, QWidget& window)
    {
        window.show();
        outlines[name] += zn::test::outlineOf(window) + '\n';
    }

    const zn::ArkSelection oneFile{{1, 2, u"Z:\\a.step", {}, zn::ArkItemType::File, 1}};
    const TaskDefinition task = define({{u"Plan", Value(u"ask")}});
    std::map<std::string, std::string> outlines;
};

TEST_F(OutlineTest, WindowsShowWhatTheirFilesTell)
{
    for (const Language& language : {Language(), Language{"DE", ZN_SOURCE_DIR "/resources/LanFiles"}}) {
        const HostDesktop desktop({"offscreen", {}}, true, language);
        TaskSetup setup(host, task);
        PropertyDialog properties(setup);
        note("PropertyDialog", properties);
        find<QListWidget>(properties, "pageTitles")->setCurrentRow(2);
        note("HostPage", properties);
        TaskDetails opened(host, 1);
        DetailsWindow details(opened);
        note("DetailsWindow", details);
        const std::vector<FileFilter> filters{{u"Parts (*.zenprt)", {u"*.zenprt"}}, {u"All files", {}}};
        BrowseDialog browser(*object, "Select Files", filters, true, nullptr);
        zn::test::type(find<QTreeView>(browser, "folders"), "pa");
        note("BrowseDialog", browser);
        const DailyHost daily{host, {}, {}, {}};
        MonitorWindow monitor(daily);
        find<QComboBox>(monitor, "since")->setCurrentIndex(1); // today was nothing
        for (int tab = 0; tab < 3; ++tab) {
            find<QTabWidget>(monitor, "monitorTabs")->setCurrentIndex(tab);
            note("MonitorWindow", monitor);
        }
        ScheduleDialog schedule(daily);
        find<QLineEdit>(schedule, "zone")->setText("UTC");
        note("ScheduleDialog", schedule);
        LaunchFlow flow(host, task, oneFile);
        LaunchDialog launch(flow);
        Answers answers({[&](QWidget& window) {
            note("LaunchDialog", window);
            static_cast<QDialog&>(window).reject();
        }});
        launch.run();
    }
    EXPECT_EQ(outlines.size(), 7U);
    for (const auto& [name, outline] : outlines)
        zn::test::expectOutline(outline, ZN_SOURCE_DIR "/tests/arkin/desktop/outlines/" + name + ".txt");
}

} // namespace zn::arkin::test
