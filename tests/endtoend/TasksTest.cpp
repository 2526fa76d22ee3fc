#include "tests/endtoend/Plant.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTreeView>

namespace zn::test {

using ::testing::ElementsAre;

namespace {

void pressLater(QWidget& dialog, const char* role)
{
    auto* button = find<QAbstractButton>(dialog, role);
    QTimer::singleShot(0, button, [button] { button->click(); });
}

void choose(QWidget& window, const char* role, const QString& text)
{
    auto* list = find<QComboBox>(window, role);
    const int row = list->findText(text);
    ASSERT_GE(row, 0) << text.toStdString();
    list->setCurrentIndex(row);
}

/// Makes the row current that these names lead to, opening on the way.
void choose(QTreeView& tree, const QStringList& names)
{
    QModelIndex index;
    for (const QString& name : names) {
        tree.expand(index);
        const auto first = tree.model()->index(0, 0, index);
        const auto found = tree.model()->match(first, Qt::DisplayRole, name, 1, Qt::MatchExactly);
        if (found.isEmpty())
            throw std::runtime_error("There is no row " + name.toStdString() + ".");
        index = found.front();
    }
    tree.setCurrentIndex(index);
}

} // namespace

TEST_F(Plant, ConvertsWhatTheUserSettlesAtTheLaunch)
{
    run("arkin task create Meshes --kind convert");
    edit(u"Meshes", [](QWidget& dialog) {
        turnTo(dialog, "Conversion Settings");
        EXPECT_EQ(find<QComboBox>(dialog, "outputFormat")->currentText(), "<Prompt the user>");
        turnTo(dialog, "Menu Command");
        auto* title = find<QLineEdit>(dialog, "menuTitle");
        title->selectAll();
        type(title, "Meshes for the workshop");
        pressOk(dialog);
    });
    EXPECT_NE(run("arkin task show Meshes").find("Meshes for the workshop"), std::string::npos);

    const auto run = launchAndWork(u"Meshes", {selected("Bracket.zenprt")}, {[](QWidget& dialog) {
        choose(dialog, "outputFormat", "STL (*.stl)");
        pressOk(dialog);
    }});
    EXPECT_EQ(run.state, TaskRunState::Finished) << toUtf8(run.resultText);
    EXPECT_THAT(details(run.id),
        ElementsAre("Bracket.zenprt | Large | 2/2 | …\\Models | …\\Models\\Bracket_zenprt_Large.stl",
            "Bracket.zenprt | Medium | 2/2 | …\\Models | …\\Models\\Bracket_zenprt_Medium.stl",
            "Bracket.zenprt | Small | 2/2 | …\\Models | …\\Models\\Bracket_zenprt_Small.stl"));
}

TEST_F(Plant, RunsTheScriptThatAnAdministratorTyped)
{
    run("arkin task create Names");
    edit(u"Names", [](QWidget& dialog) {
        turnTo(dialog, "Script");
        auto* editor = dialog.findChild<QPlainTextEdit*>();
        ASSERT_NE(editor, nullptr);
        QApplication::clipboard()->setText(
            "Sub main()\nOpen \"<Filepath>.txt\" For Output As #1\nPrint #1, \"<Version>\"\nClose #1\nEnd Sub\n");
        editor->selectAll();
        press(editor, Qt::Key_V, Qt::ControlModifier);
        pressOk(dialog);
    });
    const auto run = launchAndWork(u"Names", {},
        {
            [](QWidget& selection) { pressLater(selection, "addFiles"); },
            [](QWidget& browser) {
                choose(*find<QTreeView>(browser, "folders"), {"Plant", "Models"});
                choose(*find<QTreeView>(browser, "files"), {"Stand.zenasm"});
                pressOk(browser);
            },
            [](QWidget& selection) { pressLater(selection, "ok"); },
        });
    EXPECT_EQ(run.state, TaskRunState::Finished) << toUtf8(run.resultText);
    EXPECT_THAT(details(run.id), ElementsAre("Stand.zenasm |  | 2/2 | …\\Models"));
    EXPECT_TRUE(std::filesystem::exists(model("Stand.zenasm.txt")));
}

TEST_F(Plant, TellsOfAFileThatWentBetweenLaunchAndRun)
{
    run("arkin task create Paper --kind print --set __printer_showprintdlg=false --set '__printer_prname=Paper "
        "folder'");
    const auto id = std::to_string(launch(u"Paper", {selected("Stand.zenasm"), selected("Bracket.zenprt")}, {}));
    removeFromVault("Чертёж.zendrw"); // ticked by itself, as it shows the stand
    removeFromVault("Stand.zenasm");
    EXPECT_THAT(run("arkin worker --once; test $? = 3"), ::testing::HasSubstr("3 of 4 failed"));
    const std::string log = run("arkin task log " + id);
    EXPECT_THAT(log, ::testing::HasSubstr("\"Stand.zenasm\" was deleted from the vault."));
    EXPECT_THAT(log, ::testing::HasSubstr("\"Чертёж.zendrw\" was deleted from the vault."));
    EXPECT_THAT(printed(), ElementsAre("Bracket - Small: 1"));
}

TEST_F(Plant, PrintsAHeaderOfSeveralLines)
{
    run("arkin task create Paper --kind print --set __printer_showprintdlg=false --set '__printer_prname=Paper "
        "folder' --set __printer_autoselectrefstype=0 --set __printer_footertype=2 --set "
        "\"__printer_footerleft=$(printf "
        "'Foot one\\nFoot two')\"");
    edit(u"Paper", [](QWidget& dialog) {
        turnTo(dialog, "Margins");
        find<QRadioButton>(dialog, "headerFixed")->click();
        auto* center = find<QPlainTextEdit>(dialog, "headerCenter");
        type(center, "Say one");
        press(center, Qt::Key_Return);
        type(center, "Say two");
        pressOk(dialog);
    });
    const auto printedRun = launchAndWork(u"Paper", {selected("Bracket.zenprt")}, {});
    EXPECT_EQ(printedRun.state, TaskRunState::Finished) << toUtf8(printedRun.resultText);
    const std::string text = run("pdftotext -layout '" + (folder / "prints").string() + "/'*.pdf -");
    for (const char* line : {"Say one", "Say two", "Foot one", "Foot two"})
        EXPECT_THAT(text, ::testing::HasSubstr(line));
    EXPECT_THAT(text, ::testing::ContainsRegex("Say one *\n+ *Say two"));
}

TEST_F(Plant, PrintsAnAssemblyByEachRuleOfReferences)
{
    run("arkin task create Paper --kind print");
    edit(u"Paper", [](QWidget& dialog) {
        turnTo(dialog, "Printer");
        auto* printer = find<QComboBox>(dialog, "printerName");
        printer->setEditText("Paper folder");
        turnTo(dialog, "Paper Size and Orientation");
        pressOk(dialog);
    });
    const struct {
        const char* role;               ///< what is ticked by itself
        bool latest;                    ///< the version of the references
        std::vector<std::string> files; ///< a drawing for each of its sheets
    } rows[] = {
        {"selectNone", true, {"Stand 2/2"}},
        {"selectDrawings", true, {"Stand 2/2", "Чертёж 2/2", "Чертёж 2/2"}},
        {"selectParts", true, {"Bracket 2/2", "Stand 2/2"}},
        {"selectAll", false, {"Bracket 1/2", "Stand 2/2", "Чертёж 2/2", "Чертёж 2/2"}},
    };
    for (const auto& row : rows) {
        edit(u"Paper", [&](QWidget& dialog) {
            turnTo(dialog, "Files");
            find<QRadioButton>(dialog, row.role)->click();
            pressOk(dialog);
        });
        const auto run = launchAndWork(u"Paper", {selected("Stand.zenasm")}, {[&](QWidget& dialog) {
            find<QAbstractButton>(dialog, row.latest ? "latestVersion" : "referencedVersion")->click();
            pressLater(dialog, "print");
        }});
        EXPECT_EQ(run.state, TaskRunState::Finished) << toUtf8(run.resultText);
        std::vector<std::string> files;
        for (const std::string& line : details(run.id))
            files.push_back(line.substr(0, line.find('.')) + " " + line.substr(line.find("/2") - 1, 3));
        EXPECT_EQ(files, row.files) << row.role;
        EXPECT_EQ(printed().size(), row.files.size()) << row.role;
    }
}

} // namespace zn::test
