#include "qtglue/Texts.h"
#include "tests/addin/pages/conversion/SettingsFixture.h"
#include "tests/support/FakeHost.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>
#include <QToolButton>

namespace zn::test {
namespace {

/// The page for output files beside the real conversion settings page.
class OutputFilePage : public SettingsFixture {
protected:
    void SetUp() override
    {
        for (const char16_t* name : {u"Number", u"Title", u"Note"})
            m_vault.vault.cards().addVariable(name);
        vault->GetRootFolderPath(root);
    }

    void open(zn::arkin::Variables variables = {})
    {
        setUp(std::move(variables));
        openOutputPage();
    }
    void openOutputPage()
    {
        output.reset();
        output = pages().makeOutputFileDetailsPage(setting(TaskKind::Conversion), *page);
        outputWidget = QWidget::find(static_cast<WId>(output->window()));
        output->load(task);
        outputWidget->show();
        QTest::qWait(0);
    }
    template <class Control> Control* at(const char* role) { return find<Control>(*outputWidget, role); }
    QTextEdit* pathEdit(const char* role) { return at<QWidget>(role)->findChild<QTextEdit*>(); }
    QString example(const char* role) { return at<QLabel>(role)->text(); }

    /// The page's variables as the database holds them after a save.
    std::vector<std::string> saved()
    {
        EXPECT_TRUE(output->save(task));
        zn::arkin::Variables variables = stored();
        std::erase_if(variables, [](const auto& variable) { return variable.first.starts_with(u"__"); });
        return lines(variables);
    }

    Text root;
    std::unique_ptr<TaskPage> output;
    QWidget* outputWidget = nullptr;
};

TEST_F(OutputFilePage, ANewTaskHasTheDefaults)
{
    open();
    EXPECT_TRUE(at<QRadioButton>("replaceOutput")->isChecked());
    EXPECT_EQ(example("outputPathExample"), "Example: " + shown(root) + "\\Part_zenprt_Default.pdf");
    EXPECT_EQ(example("outputPath2Example"), "Example: ");
    EXPECT_TRUE(output->validate());
    EXPECT_THAT(saved(),
        ElementsAre("ErrorLogPath=\\Logs\\Nightly", "OutputPath=<Path>\\<Filename>_<Extension>_<Configuration>",
            "OutputPath2=", "PromptOutput=0", "RefToSource=0", "ReplaceOutput=-1", "UsedVariables="));
}

TEST_F(OutputFilePage, StoresWhatAPersonEnters)
{
    open();
    click(at<QCheckBox>("promptOutput"));
    click(at<QCheckBox>("refToSource"));
    click(at<QRadioButton>("newVersion"));
    at<QLineEdit>("errorLogPath")->selectAll();
    type(at<QLineEdit>("errorLogPath"), "D:\\Logs; all");
    press(pathEdit("outputPath"), Qt::Key_A, Qt::ControlModifier);
    type(pathEdit("outputPath"), "<Path>\\%Title%_%Title%_%Unknown%");
    type(pathEdit("outputPath2"), "D:\\Copies\\%Number%");
    const std::vector<std::string> expected{"ErrorLogPath=D:\\Logs; all",
        "OutputPath=<Path>\\%Title%_%Title%_%Unknown%", "OutputPath2=D:\\Copies\\%Number%", "PromptOutput=-1",
        "RefToSource=-1", "ReplaceOutput=0", "UsedVariables=Number,Title"};
    EXPECT_EQ(saved(), expected);

    reopenTask();
    openOutputPage();
    EXPECT_TRUE(at<QRadioButton>("newVersion")->isChecked());
    EXPECT_EQ(saved(), expected) << "load and save again";
    press(pathEdit("outputPath2"), Qt::Key_A, Qt::ControlModifier);
    press(pathEdit("outputPath2"), Qt::Key_Delete);
    EXPECT_THAT(saved(), ::testing::Contains("UsedVariables=Number,Title"))
        << "a name once found stays while the page lives";
}

TEST_F(OutputFilePage, ConvertsWhatHasAnotherType)
{
    open({{u"OutputPath", 12}, {u"RefToSource", Text(u"1")}, {u"ReplaceOutput", 0}, {u"PromptOutput", 7}});
    EXPECT_THAT(saved(),
        ElementsAre("ErrorLogPath=\\Logs\\Nightly", "OutputPath=12", "OutputPath2=", "PromptOutput=-1",
            "RefToSource=-1", "ReplaceOutput=0", "UsedVariables="));
    task->SetValue(u"ReplaceOutput", Value(u"perhaps"));
    EXPECT_THROW(output->load(task), StatusError);
}

TEST_F(OutputFilePage, TheExamplesFollowTheFormatOfTheOtherPage)
{
    open();
    type(pathEdit("outputPath2"), "x");
    on<QComboBox>("outputFormat")->setCurrentText("Viewpane (*.vprt; *.vasm; *.vdrw)");
    outputWidget->hide();
    outputWidget->show();
    EXPECT_THAT(example("outputPathExample").toStdString(), ::testing::EndsWith("Part_zenprt_Default.vprt"));
    EXPECT_EQ(example("outputPath2Example"), "Example: x.vprt");
}

TEST_F(OutputFilePage, FoldsTheVaultsRootAndInsertsFromTheMenu)
{
    open();
    QApplication::clipboard()->setText(shown(toUpper(root)) + "\\out\\");
    press(pathEdit("outputPath2"), Qt::Key_V, Qt::ControlModifier);
    click(static_cast<QWidget*>(at<QToolButton>("outputPath2Menu")));
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    press(menu, Qt::Key_Down);
    press(menu, Qt::Key_Return);
    EXPECT_EQ(example("outputPath2Example"), "Example: " + shown(root) + "\\out\\Part.pdf");
    EXPECT_THAT(saved(), ::testing::Contains("OutputPath2=<VaultPath>\\out\\<Filename>"));
}

TEST_F(OutputFilePage, StopsAtTheFirstRefusedWrite)
{
    open();
    FakeHost host;
    host.failures["SetValue RefToSource"] = E_ACCESSDENIED;
    EXPECT_THROW(output->save(host.task()), StatusError);
    EXPECT_EQ(host.taskVariables.size(), 3U);
    EXPECT_FALSE(host.taskVariables.contains(u"ReplaceOutput"));
}

TEST_F(OutputFilePage, BrowsingTakesTheFolderUnlessItIsCancelledOrFails)
{
    m_vault.addReleased("Logs/a.txt", "a");
    open();
    const auto browse = [&](const Text& folder) {
        browser.folder = folder;
        click(at<QPushButton>("browse"));
        return at<QLineEdit>("errorLogPath")->text();
    };
    EXPECT_EQ(browse(u""), "\\Logs\\Nightly");
    EXPECT_EQ(browser.asked, "Select a folder:");
    EXPECT_EQ(browse(root + u"\\Logs"), shown(root) + "\\Logs");
    m_vault.vault.permissions().set(*m_vault.vault.findFolder(root + u"\\Logs"), u"anna", {false, false, false});
    Answers answers{QMessageBox::Ok};
    EXPECT_EQ(browse(root + u"\\Logs"), shown(root) + "\\Logs");
    EXPECT_FALSE(answers.shown().value(0).isEmpty());
}

TEST_F(OutputFilePage, AdvancedScriptingWritesTheMacroAtOnce)
{
    open();
    Answers answers({[](QWidget& modal) { qobject_cast<QDialog*>(&modal)->accept(); }});
    click(at<QPushButton>("advancedScripting"));
    EXPECT_EQ(answers.shown(), QStringList("Advanced Scripting Options"));
    EXPECT_TRUE(stored().contains(u"__script"));
    EXPECT_FALSE(stored().contains(u"OutputPath"));
}

} // namespace
} // namespace zn::test
