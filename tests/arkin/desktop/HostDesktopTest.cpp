#include "arkin/desktop/DetailsWindow.h"
#include "arkin/desktop/LaunchDialog.h"
#include "tests/arkin/desktop/DesktopFixture.h"
#include "tests/support/VirtualDisplay.h"

#include <cstdlib>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <soci/soci.h>

namespace zn::arkin::test {

using zn::Value;

class HostDesktopTest : public DesktopFixture {
protected:
    static zn::ArkSelection oneFile() { return {{1, 2, u"Z:\\a.step", {}, zn::ArkItemType::File, 1}}; }

    HostDesktop shown{{"offscreen", {}}, true};
    HostDesktop hidden{{"offscreen", {}}, false};
};

TEST_F(HostDesktopTest, FillsANewTaskUnseen)
{
    TaskDefinition task;
    task.addIn = u"Test.Pages";
    task.variables = {{u"First", Value(u"given")}};
    TaskSetup setup(host, task);
    hidden.fillTask(setup);
    EXPECT_EQ(setup.task().variables, (Variables{{u"First", Value(u"given")}, {u"Second", Value(u"")}}));
    EXPECT_TRUE(tasks.list().empty());

    const struct {
        Variables variables;
        const char* sentence;
    } rows[] = {
        {{{u"First", Value(u"bad")}}, "The page 'First' doesn't accept what it starts with: it gives no reason."},
        {{{u"Plan", Value(u"fail")}}, "The task '' isn't changed: It went wrong."},
        {{{u"Plan", Value(u"box")}}, "Nobody sees this."},
        {{{u"Plan", Value(u"tell")}}, "Nobody hears this."},
    };
    for (const auto& row : rows) {
        task.variables = row.variables;
        TaskSetup other(host, task);
        EXPECT_EQ(sentenceOf([&] { hidden.fillTask(other); }), row.sentence);
    }
}

TEST_F(HostDesktopTest, LaunchesWithWhatThePageSettles)
{
    const auto task = define({{u"Plan", Value(u"ask")}});
    const auto answerPage = [](const QString& text, QDialogButtonBox::StandardButton button) {
        return [text, button](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Nightly: Settings");
            find<QLineEdit>(dialog, "editColour")->setText(text);
            find<QDialogButtonBox>(dialog, "buttons")->button(button)->click();
            if (text == "bad")
                static_cast<QDialog&>(dialog).reject();
        };
    };
    for (const auto& [text, button] :
        {std::pair(QString("red"), QDialogButtonBox::Cancel), std::pair(QString("bad"), QDialogButtonBox::Ok)}) {
        LaunchFlow launch(host, task, oneFile());
        Answers answers({answerPage(text, button)});
        EXPECT_FALSE(shown.launchTask(launch));
    }
    EXPECT_EQ(runCount(), 0U);
    LaunchFlow launch(host, task, oneFile());
    Answers answers({answerPage("red", QDialogButtonBox::Ok)});
    const auto run = shown.launchTask(launch);
    ASSERT_TRUE(run);
    EXPECT_EQ(RunStore(vault.store.database(), host.vaultId).variables(run->id).at(u"Colour"), Value(u"red"));
    EXPECT_EQ(stored().variables, task.variables);
}

TEST_F(HostDesktopTest, ALaunchThatNobodyCanSettleSaysWhatIsOpen)
{
    const auto task = define({{u"Plan", Value(u"ask")}});
    LaunchFlow launch(host, task, oneFile());
    EXPECT_EQ(sentenceOf([&] { hidden.launchTask(launch); }),
        "The task 'Nightly' wasn't launched: it leaves settings to the user ('Settings': Colour values) and there is "
        "no window to ask in. Settle them in the task with 'arkin task set'.");
    tasks.change(task.id, {{{u"Plan", Value(u"")}}, {}, u"anna", 1});
    LaunchFlow settled(host, stored(), oneFile());
    EXPECT_TRUE(hidden.launchTask(settled));
    tasks.change(task.id, {{{u"Plan", Value(u"tell")}}, {}, u"anna", 1});
    LaunchFlow told(host, stored(), oneFile());
    EXPECT_EQ(sentenceOf([&] { hidden.launchTask(told); }), "Nobody hears this.");
    EXPECT_EQ(runCount(), 1U);
}

TEST_F(HostDesktopTest, ALaunchThatTheUserGivesUpOrThatFailsLeavesNoRun)
{
    const auto task = define({{u"Plan", Value(u"cancel")}});
    LaunchFlow given(host, task, oneFile());
    EXPECT_FALSE(shown.launchTask(given));
    tasks.change(task.id, {{{u"Plan", Value(u"fail")}}, {}, u"anna", 1});
    LaunchFlow failing(host, stored(), oneFile());
    EXPECT_THAT(sentenceOf([&] { shown.launchTask(failing); }),
        ::testing::StartsWith("The task 'Nightly' couldn't be launched: "));
    EXPECT_EQ(runCount(), 0U);
}

TEST_F(HostDesktopTest, DetailsShowTheRunAsItStandsWhenTheyAreRefreshed)
{
    RunStore runs(vault.store.database(), host.vaultId);
    const auto id = runs.enqueue(define(), {newGuid(), u"anna", oneFile(), {}}, 1);
    TaskDetails details(host, id);
    DetailsWindow window(details);
    window.show();
    QApplication::setActiveWindow(&window);
    EXPECT_EQ(find<QLineEdit>(window, "editFiles")->text(), "1");
    EXPECT_EQ(window.windowTitle(), "Run 1 of “Nightly”");
    vault.store.database().session() << "UPDATE task_runs SET state = 7";
    QTest::keyClick(&window, Qt::Key_F5);
    EXPECT_EQ(window.findChildren<QLineEdit*>("editFiles").size(), 1);
    EXPECT_EQ(find<QLineEdit>(window, "editFiles")->text(), "7");
    EXPECT_EQ(find<QLabel>(window, "heading")->text(), "Selected Files (finished)");
    EXPECT_FALSE(find<QPlainTextEdit>(window, "messages")->isVisible());
    vault.store.database().session() << "UPDATE task_runs SET outputs_expected = 40, outputs_missing = 3";
    vault.store.database().session() << "INSERT INTO task_run_messages (run_id, position, path, sentence) VALUES "
                                        "(1, 0, 'Z:\\V\\a.step', 'It is damaged.'), (1, 1, '', 'The disk is full.')";
    QTest::keyClick(&window, Qt::Key_F5);
    EXPECT_EQ(find<QLabel>(window, "heading")->text(), "Selected Files (finished, 3 of 40 failed)");
    EXPECT_TRUE(find<QPlainTextEdit>(window, "messages")->isVisible());
    EXPECT_EQ(
        find<QPlainTextEdit>(window, "messages")->toPlainText(), "Z:\\V\\a.step: It is damaged.\nThe disk is full.");
}

TEST(DisplayTest, ADisplayThatDoesntAnswerIsSaidSo)
{
    const auto problem = [](const char* platform, const char* x11) {
        setenv("QT_QPA_PLATFORM", platform, 1);
        setenv("DISPLAY", x11, 1);
        unsetenv("WAYLAND_DISPLAY");
        return findDisplay().problem;
    };
    EXPECT_EQ(problem("", ""), "There is no display here: neither DISPLAY nor WAYLAND_DISPLAY is set.");
    EXPECT_EQ(problem("", ":9876"), "The display ':9876' can't be reached.");
    EXPECT_EQ(problem("xcb", ":9876"), "The display ':9876' can't be reached.");
    EXPECT_EQ(problem("offscreen", ":0"), "QT_QPA_PLATFORM is 'offscreen', which shows no windows.");
    unsetenv("DISPLAY");
    const HostDesktop desktop(findDisplay(), true);
    EXPECT_FALSE(desktop.canAsk());
    EXPECT_THROW(desktop.requireDisplay(), zn::StatusError);
}

/// One server ends with its last client, so that any moment without one is seen. With the other each command is the
/// last client in its turn, after which the server starts anew under the next one.
TEST(DisplayTest, ADisplayIsHeldUntilTheToolkitHasItAndUsedWhenItJustReset)
{
    for (const auto& [whenLeft, commands] : {std::pair("-terminate", 1), std::pair<const char*, int>(nullptr, 6)}) {
        const zn::test::VirtualDisplay display(whenLeft);
        ASSERT_TRUE(display.isThere()) << "Xvfb can't be started; install the package xvfb.";
        for (int command = 0; command < commands; ++command)
            EXPECT_EQ(std::system("unset QT_QPA_PLATFORM WAYLAND_DISPLAY; " ZN_BIN_DIR "/display_probe"), 0);
    }
}

} // namespace zn::arkin::test
