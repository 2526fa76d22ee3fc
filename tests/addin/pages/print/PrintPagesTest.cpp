// The four pages of a print task, driven as an administrator does.

#include "addin/pages/print/MillimeterEdit.h"
#include "tests/support/FakeHost.h"
#include "tests/support/pages/PageFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zn::test {

namespace {

class PrintPages : public PageFixture {
protected:
    PrintPages()
    {
        openTask(TaskKind::Printing);
        new QVBoxLayout(&window);
    }

    TaskPage& open(PageName name)
    {
        opened = pages().makePage(name, setting(TaskKind::Printing));
        QWidget* widget = windowOf(opened->window());
        window.layout()->addWidget(widget);
        widget->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        opened->load(task);
        return *opened;
    }

    /// What opening, pressing and saving a page leaves in the task.
    std::string savedBy(PageName name, const std::vector<const char*>& buttons = {})
    {
        TaskPage& page = open(name);
        for (const char* role : buttons)
            click(find<QAbstractButton>(window, role));
        EXPECT_TRUE(page.save(task));
        return printValues();
    }

    /// "name=value" without the variables' common beginning; "?" in place of "=" for booleans, ":" for floats.
    std::string printValues()
    {
        std::string all;
        for (const auto& [name, value] : stored()) {
            const char* sign = value.type() == ValueType::Boolean ? "?"
                : value.type() == ValueType::Float32              ? ":"
                                                                  : "=";
            if (name.starts_with(u"__printer_"))
                all += toUtf8(name.substr(10)) + sign + toUtf8(value.toText()) + " ";
            else if (name == u"ErrorLogPath")
                all += "log=" + toUtf8(value.toText()) + " ";
        }
        return all;
    }

    std::unique_ptr<TaskPage> opened;
};

void retype(QLineEdit* edit, const QString& text)
{
    edit->setFocus();
    edit->selectAll();
    type(edit, text);
}

} // namespace

TEST_F(PrintPages, StoreTheseValuesOfANewTask)
{
    const struct {
        PageName page;
        const char* expected;
    } rows[] = {
        {PageName::Printer,
            "papsize_A= papsize_A0= papsize_A1= papsize_A2= papsize_A3= papsize_A4= papsize_B= papsize_C= papsize_D= "
            "papsize_E= prname= prnamelist= prseltype=0 "},
        {PageName::PaperSize, "deforientation=1 defpapsize=10 usedrwnfo?-1 userorientchange?-1 usersizechange?-1 "},
        {PageName::Margins,
            "footercenter= footerleft= footerright= footertype=1 headercenter= headerleft= headerright= headertype=1 "
            "marginbottom:0 marginleft:0 marginright:0 margintop:0 margintype=1 "},
        {PageName::Files, "log=\\Logs\\Nightly autoselectrefstype=1 refversiontype=2 showprintdlg?-1 "},
    };
    for (const auto& row : rows) {
        tasks.remove(tasks.get(u"Nightly").id);
        task.reset();
        openTask(TaskKind::Printing);
        EXPECT_EQ(savedBy(row.page), row.expected);
    }
}

TEST_F(PrintPages, OfferTheMachinesPrintersAndKeepOthers)
{
    addPrinter(u"Plotter");
    addPrinter(u"Tray 2");
    store({{u"__printer_prname", u"Of the worker"}, {u"__printer_papsize_C", u"Roll"}, {u"__printer_prseltype", 2}});
    TaskPage& page = open(PageName::Printer);
    auto* name = find<QComboBox>(window, "printerName");
    EXPECT_EQ(name->count(), 2);
    EXPECT_EQ(name->itemText(0), "Plotter");
    EXPECT_EQ(name->currentText(), "Of the worker");

    // The edit over a row opens at a click and gives its text back when it loses the focus.
    auto* sizes = find<QTreeWidget>(window, "printersBySize");
    const auto clickRow = [&](int row) {
        QTest::mouseClick(
            sizes->viewport(), Qt::LeftButton, {}, sizes->visualItemRect(sizes->topLevelItem(row)).center());
        return qobject_cast<QLineEdit*>(sizes->indexWidget(sizes->currentIndex()));
    };
    EXPECT_EQ(sizes->topLevelItem(2)->text(1), "Roll");
    QLineEdit* edit = clickRow(0);
    ASSERT_TRUE(edit);
    retype(edit, "Plotter");
    click(find<QAbstractButton>(window, "promptPrinter"));
    EXPECT_EQ(sizes->topLevelItem(0)->text(1), "Plotter");
    EXPECT_FALSE(clickRow(3)); // only for the choice by paper size

    find<QPlainTextEdit>(window, "printerNames")->setFocus();
    type(window.focusWidget(), "Plotter");
    press(window.focusWidget(), Qt::Key_Return);
    type(window.focusWidget(), "Tray 2");
    press(window.focusWidget(), Qt::Key_Tab);
    EXPECT_NE(window.focusWidget(), find<QPlainTextEdit>(window, "printerNames"));
    EXPECT_TRUE(page.save(task));
    EXPECT_EQ(printValues(),
        "papsize_A=Plotter papsize_A0= papsize_A1= papsize_A2= papsize_A3= papsize_A4= papsize_B= papsize_C=Roll "
        "papsize_D= papsize_E= prname=Of the worker prnamelist=Plotter\r\nTray 2 prseltype=1 ");

    // An edit that is still open when the host saves.
    click(find<QAbstractButton>(window, "printerBySize"));
    retype(clickRow(9), "Tray 2");
    EXPECT_TRUE(page.save(task));
    EXPECT_EQ(stored().at(u"__printer_papsize_A4"), Value(u"Tray 2"));
}

TEST_F(PrintPages, WorkOnAMachineWithoutPrinters)
{
    TaskPage& page = open(PageName::Printer);
    auto* name = find<QComboBox>(window, "printerName");
    EXPECT_EQ(name->count(), 0);
    EXPECT_EQ(name->lineEdit()->placeholderText(), "This machine has no printers; enter one of the worker's.");
    retype(name->lineEdit(), "Plotter");
    EXPECT_TRUE(page.save(task));
    EXPECT_EQ(stored().at(u"__printer_prname"), Value(u"Plotter"));
}

TEST_F(PrintPages, SelectThePaperSizeByItsCode)
{
    const struct {
        Value code;
        const char* shown;
        int saved;
    } rows[]
        = {{0, "A", 0}, {5, "E", 5}, {9, "A3", 9}, {u"7", "A1", 7}, {11, "A4", 10}, {-1, "A4", 10}, {99, "A4", 10}};
    for (const auto& row : rows) {
        store({{u"__printer_defpapsize", row.code}, {u"__printer_usersizechange", 0}});
        TaskPage& page = open(PageName::PaperSize);
        EXPECT_EQ(find<QComboBox>(window, "paperSize")->currentText(), row.shown);
        EXPECT_FALSE(find<QCheckBox>(window, "sizeChange")->isChecked());
        EXPECT_TRUE(page.save(task));
        EXPECT_EQ(stored().at(u"__printer_defpapsize"), Value(row.saved));
    }
    EXPECT_EQ(savedBy(PageName::PaperSize, {"portrait", "useDrawing", "orientationChange"}),
        "deforientation=0 defpapsize=10 usedrwnfo?0 userorientchange?0 usersizechange?0 ");
}

TEST_F(PrintPages, OpenTheFieldsOfAFixedChoice)
{
    open(PageName::Margins);
    const auto enabled = [&] {
        std::string all;
        for (const char* role : {"marginTop", "marginRight", "headerLeft", "footerCenter"})
            all += find<QWidget>(window, role)->isEnabled() ? '1' : '0';
        return all;
    };
    EXPECT_EQ(enabled(), "0000");
    click(find<QAbstractButton>(window, "marginsFixed"));
    EXPECT_EQ(enabled(), "1100");
    click(find<QAbstractButton>(window, "footerFixed"));
    EXPECT_EQ(enabled(), "1101");
    click(find<QAbstractButton>(window, "marginsDefault"));
    EXPECT_EQ(enabled(), "0001");
    store({{u"__printer_headertype", 2}, {u"__printer_footertype", 0}});
    open(PageName::Margins);
    EXPECT_EQ(enabled(), "0010");
}

TEST_F(PrintPages, KeepMarginsAndTexts)
{
    store({{u"__printer_margintop", 12}, {u"__printer_marginleft", 0.1F}, {u"__printer_marginright", u"7.25"},
        {u"__printer_headerleft", u"Zeile 1\r\nZeile 2"}, {u"__printer_footerleft", u"a\nb"},
        {u"__printer_margintype", 2}});
    TaskPage& page = open(PageName::Margins);
    click(find<QAbstractButton>(window, "headerFixed"));
    auto* center = find<QPlainTextEdit>(window, "headerCenter");
    type(center, "A\u00A0-");
    press(center, Qt::Key_Return);
    press(center, Qt::Key_Return);
    type(center, "B");
    EXPECT_EQ(find<QLineEdit>(window, "marginLeft")->text(), "0.1");
    retype(find<QLineEdit>(window, "marginBottom"), "12,5");
    EXPECT_TRUE(page.save(task));
    EXPECT_EQ(printValues(),
        "footercenter= footerleft=a\r\nb footerright= footertype=1 headercenter=A\u00A0-\r\n\r\nB "
        "headerleft=Zeile 1\r\nZeile 2 headerright= headertype=2 marginbottom:12.5 marginleft:0.1 marginright:7.25 "
        "margintop:12 margintype=2 ");
}

TEST_F(PrintPages, RefuseAMarginThatIsNoNumber)
{
    store({{u"__printer_margintype", 2}, {u"__printer_marginright", 3.5F}});
    TaskPage& page = open(PageName::Margins);
    auto* right = find<QLineEdit>(window, "marginRight");
    retype(right, "3 mm");
    window.setFocus();
    Answers answers({QMessageBox::Ok});
    EXPECT_FALSE(page.validate());
    EXPECT_EQ(answers.shown(),
        QStringList("\"3 mm\" is no length for the margin \"Right\". Please enter a number, such as 12.5."));
    EXPECT_EQ(window.focusWidget(), right);
    EXPECT_EQ(right->selectedText(), "3 mm");
    EXPECT_FALSE(stored().contains(u"__printer_margintop"));

    // Greyed, it couldn't be corrected.
    click(find<QAbstractButton>(window, "marginsPrompt"));
    EXPECT_EQ(right->text(), "3.5");
    EXPECT_TRUE(page.validate());
}

TEST(Millimeters, AreReadAlikeInAllCountries)
{
    const struct {
        const char* text = "";
        std::optional<float> number;
    } rows[] = {{"12.5", 12.5F}, {" 12,5 ", 12.5F}, {"0", 0.0F}, {",5", 0.5F}, {"7.", 7.0F}, {"-1", -1.0F}, {"", {}},
        {" ", {}}, {",", {}}, {"1.000,5", {}}, {"1e3", {}}, {"0x10", {}}, {"inf", {}}, {"nan", {}}, {"12.5mm", {}},
        {"99999999999999999999999999999999999999999", {}}};
    for (const auto& row : rows)
        EXPECT_EQ(parseMillimeters(row.text), row.number) << row.text;
    MillimeterEdit edit(nullptr);
    for (const float number : {0.1F, 12.5F, 1e20F, 1e-7F, -3.3F}) {
        edit.setNumber(number);
        EXPECT_EQ(edit.number(), number) << edit.text().toStdString();
    }
}

TEST_F(PrintPages, StoreWhatIsChosenForReferences)
{
    EXPECT_EQ(savedBy(PageName::Files, {"showDialog", "selectAll", "latest"}),
        "log=\\Logs\\Nightly autoselectrefstype=3 refversiontype=1 showprintdlg?0 ");
    EXPECT_EQ(savedBy(PageName::Files, {"selectParts", "asBuilt"}),
        "log=\\Logs\\Nightly autoselectrefstype=2 refversiontype=0 showprintdlg?0 ");
    open(PageName::Files);
    EXPECT_TRUE(find<QAbstractButton>(window, "asBuilt")->isChecked());
    EXPECT_EQ(find<QAbstractButton>(window, "asBuilt")->text().remove('&'),
        "Use the referenced version of referenced files (\"as built\")");
}

TEST_F(PrintPages, TakeALogFolderBelowTheVaultsRoot)
{
    std::filesystem::create_directories(m_vault.local("Logs/Printing"));
    m_vault.addReleased("Logs/Printing/readme.txt", "x");
    const auto page = pages().makePage(PageName::Files, setting(TaskKind::Printing));
    auto* path = find<QLineEdit>(window, "errorLogPath");
    browser.folder = m_vault.path("Logs/Printing");
    click(find<QAbstractButton>(window, "browse"));
    EXPECT_EQ(browser.asked, "Please select a folder:");
    EXPECT_EQ(path->text(), "\\Logs\\Printing");
    browser.folder.clear();
    click(find<QAbstractButton>(window, "browse"));
    EXPECT_EQ(path->text(), "\\Logs\\Printing");
    Answers answers({QMessageBox::Ok});
    vault->setDesktop(nullptr);
    click(find<QAbstractButton>(window, "browse"));
    EXPECT_EQ(path->text(), "\\Logs\\Printing");
    EXPECT_TRUE(page->save(task));
    EXPECT_EQ(stored().at(u"ErrorLogPath"), Value(u"\\Logs\\Printing"));
}

TEST_F(PrintPages, OpenTheTasksMacro)
{
    open(PageName::Files);
    Answers answers({[](QWidget& dialog) { static_cast<QDialog&>(dialog).reject(); }});
    click(find<QAbstractButton>(window, "advancedScripting"));
    EXPECT_EQ(answers.shown(), QStringList("Advanced Scripting Options"));
    EXPECT_FALSE(stored().contains(u"__script"));
}

TEST_F(PrintPages, ShowWhatWasReadBeforeAFailure)
{
    store({{u"__printer_usedrwnfo", false}, {u"__printer_defpapsize", 3}, {u"__printer_usersizechange", u"maybe"},
        {u"__printer_deforientation", 0}});
    const Raised raised = raisedBy([&] { open(PageName::PaperSize); });
    EXPECT_EQ(raised.status, DISP_E_TYPEMISMATCH);
    EXPECT_THAT(raised.sentence, HasSubstr("\"__printer_usersizechange\""));
    EXPECT_FALSE(find<QCheckBox>(window, "useDrawing")->isChecked());
    EXPECT_EQ(find<QComboBox>(window, "paperSize")->currentText(), "C");
    EXPECT_TRUE(find<QAbstractButton>(window, "landscape")->isChecked());
}

TEST_F(PrintPages, StopAtTheFirstRefusedWrite)
{
    const struct {
        PageName page;
        const char* refused;
        std::size_t written;
    } rows[] = {{PageName::Printer, "__printer_papsize_B", 4}, {PageName::PaperSize, "__printer_deforientation", 3},
        {PageName::Margins, "__printer_marginleft", 5}, {PageName::Files, "ErrorLogPath", 3}};
    for (const auto& row : rows) {
        FakeHost host;
        host.failures[std::string("SetValue ") + row.refused] = E_ACCESSDENIED;
        TaskPage& page = open(row.page);
        EXPECT_THROW(page.save(host.task()), StatusError);
        EXPECT_EQ(host.taskVariables.size(), row.written) << row.refused;
    }
}

} // namespace zn::test
