#include "tests/support/windows/Outline.h"
#include "arkin/desktop/BrowseDialog.h"
#include "arkin/desktop/DetailsWindow.h"
#include "arkin/desktop/LaunchDialog.h"
#include "arkin/desktop/PropertyDialog.h"
#include "arkin/tasks/RunStore.h"
#include "tests/arkin/desktop/DesktopFixture.h"

#include <QTreeView>
#include <soci/soci.h>

namespace zn::arkin::test {

class OutlineTest : public DesktopFixture {
public:
    OutlineTest()
    {
        task = define({{u"Plan", Value(u"ask")}});
        for (const auto* name : {"Parts/b.ZENPRT", "Parts/a.zenprt", "Parts/note", "top.step"})
            vault.addReleased(name, name);
        run = RunStore(vault.store.database(), host.vaultId).enqueue(task, {newGuid(), u"anna", oneFile(), {}}, 1);
        vault.store.database().session()
            << "UPDATE task_runs SET state = 7, outputs_expected = 40, outputs_missing = 1";
        vault.store.database().session() << "INSERT INTO task_run_messages (run_id, position, path, sentence) VALUES "
                                            "(1, 0, 'Z:\\V\\a.step', 'It is damaged.')";
    }

    static zn::ArkSelection oneFile() { return {{1, 2, u"Z:\\a.step", {}, zn::ArkItemType::File, 1}}; }

    std::string properties()
    {
        TaskSetup setup(host, task);
        PropertyDialog dialog(setup);
        return shown(dialog);
    }
    std::string launch()
    {
        LaunchFlow flow(host, task, oneFile());
        LaunchDialog dialog(flow);
        std::string outline;
        Answers answers({[&](QWidget& window) {
            outline = zn::test::outlineOf(window);
            static_cast<QDialog&>(window).reject();
        }});
        dialog.run();
        return outline;
    }
    std::string files()
    {
        BrowseDialog dialog(
            *object, "Select Files", {{u"Parts (*.zenprt)", {u"*.zenprt"}}, {u"All files", {}}}, true, nullptr);
        zn::test::type(find<QTreeView>(dialog, "folders"), "pa");
        return shown(dialog);
    }
    std::string details()
    {
        TaskDetails opened(host, run);
        DetailsWindow window(opened);
        return shown(window);
    }

    TaskDefinition task;
    std::int32_t run = 0;

private:
    static std::string shown(QWidget& window)
    {
        window.show();
        return zn::test::outlineOf(window);
    }
};

TEST_F(OutlineTest, WindowsShowWhatTheirFilesTell)
{
    const struct {
        const char* name;
        std::string (OutlineTest::*outline)();
    } windows[] = {
        {"PropertyDialog", &OutlineTest::properties},
        {"LaunchDialog", &OutlineTest::launch},
        {"BrowseDialog", &OutlineTest::files},
        {"DetailsWindow", &OutlineTest::details},
    };
    for (const auto& [name, outline] : windows) {
        std::string outlines;
        for (const Language& language : {Language(), Language{"DE", ZN_SOURCE_DIR "/resources/LanFiles"}}) {
            const HostDesktop desktop({"offscreen", {}}, true, language);
            outlines += (this->*outline)() + '\n';
        }
        zn::test::expectOutline(outlines,
            std::filesystem::path(ZN_SOURCE_DIR "/tests/arkin/desktop/outlines") / (std::string(name) + ".txt"));
    }
}

} // namespace zn::arkin::test
