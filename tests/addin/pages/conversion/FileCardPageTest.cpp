#include "tests/support/pages/PageFixture.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

namespace zn::test {
namespace {

class FileCardPage : public PageFixture {
protected:
    void open(const std::vector<const char16_t*>& variables = {u"Number", u"Title", u"Note"}, const Text& mapping = {})
    {
        for (const char16_t* name : variables)
            ids[name] = m_vault.vault.cards().addVariable(name);
        openTask(TaskKind::Conversion,
            mapping.empty() ? zn::arkin::Variables() : zn::arkin::Variables{{u"FileCardData", mapping}});
        page = pages().makePage(PageName::FileCard, setting(TaskKind::Conversion));
        widget = QWidget::find(static_cast<WId>(page->window()));
        page->load(task);
        widget->resize(600, 500);
        widget->show();
        QTest::qWait(0);
        list = on<QTreeWidget>("cardVariables");
    }
    template <class Control> Control* on(const char* role) { return find<Control>(*widget, role); }

    /// The list as "source > destination".
    std::vector<std::string> rows()
    {
        std::vector<std::string> found;
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            found.push_back((list->topLevelItem(i)->text(0) + " > " + list->topLevelItem(i)->text(1)).toStdString());
        return found;
    }
    void clickRow(int row)
    {
        const QRect place = list->visualItemRect(list->topLevelItem(row));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
    }
    /// Opens the list and chooses the entry with that text.
    void choose(const char* role, const QString& text)
    {
        auto* combo = on<QComboBox>(role);
        combo->showPopup();
        combo->view()->setCurrentIndex(combo->model()->index(combo->findText(text), 0));
        press(combo->view(), Qt::Key_Return);
        ASSERT_EQ(combo->currentText(), text);
    }
    /// Which of the controls that work on a row are enabled.
    QString enabled()
    {
        QString found;
        for (const char* role : {"removeVariable", "source", "destinationVariable", "freeText"})
            found += on<QWidget>(role)->isEnabled() ? '1' : '0';
        return found;
    }
    std::string saved()
    {
        EXPECT_TRUE(page->save(task));
        return toUtf8(stored().at(u"FileCardData").toText());
    }
    bool isDeclared(const char16_t* name)
    {
        Value value;
        return task->GetVariable(ids.at(name), value) == S_OK;
    }

    std::map<Text, std::int32_t> ids;
    std::unique_ptr<TaskPage> page;
    QWidget* widget = nullptr;
    QTreeWidget* list = nullptr;
};

TEST_F(FileCardPage, BuildsRowsFromClicksAndKeys)
{
    open();
    EXPECT_EQ(enabled(), "0000");
    click(on<QPushButton>("addVariable"));
    EXPECT_THAT(rows(), ElementsAre(" > Number"));
    EXPECT_EQ(widget->focusWidget(), on<QComboBox>("destinationVariable"));
    EXPECT_EQ(enabled(), "1111");
    EXPECT_EQ(on<QComboBox>("source")->currentText(), "Free Text");
    type(on<QLineEdit>("freeText"), "made by task; see log");

    click(on<QPushButton>("addVariable"));
    EXPECT_EQ(on<QLineEdit>("freeText")->text(), "");
    choose("destinationVariable", "Title");
    choose("source", "Source Revision Number");
    EXPECT_EQ(enabled(), "1110");

    click(on<QPushButton>("addVariable"));
    choose("source", "Note");
    click(on<QPushButton>("addVariable"));
    EXPECT_THAT(rows(),
        ElementsAre("made by task; see log > Number", "Source Revision Number > Title", "Note > Number", " > Number"));
    EXPECT_EQ(saved(), "Number;8;made by task; see log\nTitle;4;\nNumber;100;Note\nNumber;8;\n");
    EXPECT_TRUE(isDeclared(u"Number") && isDeclared(u"Title") && isDeclared(u"Note"));
}

TEST_F(FileCardPage, ShowsWhatIsSelectedAndRemovesIt)
{
    open({u"Number", u"Title"}, u"Number;8;a;b\nTitle;7;\nNumber;100;Title\n");
    EXPECT_THAT(rows(), ElementsAre("a;b > Number", "Conversion Date and Time > Title", "Title > Number"));
    EXPECT_EQ(enabled(), "0000");
    const struct {
        const char* source;
        const char* destination;
        const char* freeText;
        const char* enabled;
    } expected[] = {{"Free Text", "Number", "a;b", "1111"}, {"Conversion Date and Time", "Title", "", "1110"},
        {"Title", "Number", "", "1110"}};
    for (int row = 0; row < 3; ++row) {
        clickRow(row);
        EXPECT_EQ(on<QComboBox>("source")->currentText(), expected[row].source);
        EXPECT_EQ(on<QComboBox>("destinationVariable")->currentText(), expected[row].destination);
        EXPECT_EQ(on<QLineEdit>("freeText")->text(), expected[row].freeText);
        EXPECT_EQ(enabled(), expected[row].enabled);
    }
    // A row that becomes free text loses its source; its text is what is typed then.
    choose("source", "Free Text");
    EXPECT_THAT(rows(), ElementsAre("a;b > Number", "Conversion Date and Time > Title", " > Number"));
    clickRow(1);
    click(on<QPushButton>("removeVariable"));
    EXPECT_EQ(saved(), "Number;8;a;b\nNumber;8;\n");
    while (on<QPushButton>("removeVariable")->isEnabled())
        click(on<QPushButton>("removeVariable"));
    EXPECT_EQ(saved(), "");
    EXPECT_EQ(enabled(), "0000");
    EXPECT_EQ(on<QComboBox>("source")->currentIndex(), -1);
    EXPECT_FALSE(isDeclared(u"Title"));
}

TEST_F(FileCardPage, LinesOfDeletedVariablesGoAndTheOthersStayAsTheyWere)
{
    open({u"Number", u"Title"},
        u"Number;1;\nGone;2;\nTitle;100;Gone\n\nTitle;3;ignored\nnumber;4;\nTitle;42;x\nTitle;8;\nTitle");
    EXPECT_THAT(rows(),
        ElementsAre("Source File Name > Number", "Source Configuration > Title", " > Title", " > Title", " > Title"));
    EXPECT_EQ(saved(), "Number;1;\nTitle;3;\nTitle;42;\nTitle;8;\nTitle;0;\n");
    const std::string once = saved();
    page->load(task);
    EXPECT_EQ(saved(), once);
}

TEST_F(FileCardPage, AFreeTextHoldsNoLineEnd)
{
    open();
    click(on<QPushButton>("addVariable"));
    on<QLineEdit>("freeText")->setFocus();
    auto* edit = on<QLineEdit>("freeText");
    edit->insert("one\r\ntwo\u2028three");
    Q_EMIT edit->textEdited(edit->text());
    EXPECT_EQ(saved(), "Number;8;one two three\n");
}

TEST_F(FileCardPage, AVaultWithoutVariablesOffersNothing)
{
    open({});
    EXPECT_FALSE(on<QPushButton>("addVariable")->isEnabled());
    EXPECT_EQ(saved(), "");
}

} // namespace
} // namespace zn::test
