#include "addin/pages/details/FileDetailsPageDlg.h"

#include "addin/files/FileLogic.h"
#include "addin/pages/lists/VListCtrl.h"
#include "arkin/tasks/LaunchInstance.h"
#include "tests/support/pages/PageFixture.h"

#include <gmock/gmock.h>
#include <QHeaderView>

namespace zn::test {

namespace {

using Rows = std::vector<std::string>;

/// Lists of real files in a real vault: a.zenprt has two versions, b.zenprt one.
class FileDetailsPage : public PageFixture {
protected:
    FileDetailsPage()
    {
        partA = m_vault.addReleased("parts/a.zenprt", "1");
        partB = m_vault.addReleased("parts/b.zenprt", "1");
        m_vault.change(partA, "parts/a.zenprt", "2");
    }

    OutputRecord input(const zn::arkin::Place& place, const char* path, std::int32_t version)
    {
        OutputRecord record;
        record.path = m_vault.path(path);
        record.docId = place.fileId;
        record.projId = place.folderId;
        record.version = version;
        return record;
    }

    std::shared_ptr<zn::arkin::LaunchInstance> run(TaskKind kind)
    {
        openTask(kind);
        return std::make_shared<zn::arkin::LaunchInstance>(tasks.get(u"Nightly"), zn::arkin::RunSetting{});
    }

    void writeSelection(const ObjectRef& instance, const std::vector<OutputRecord>& records)
    {
        SelectionRecords selection;
        for (const OutputRecord& record : records)
            selection.push_back(std::make_unique<OutputRecord>(record));
        FileLogic logic(ports);
        logic.Initialize(vault, TaskKind::Unknown, false);
        logic.WriteList(instance, TaskKind::Unknown, &selection);
    }

    /// Writes `__output_list` as a run does.
    void writeResults(const ObjectRef& instance, TaskKind kind, const std::function<void(FileLogic&)>& work)
    {
        FileLogic logic(ports);
        logic.Initialize(vault, kind, false);
        work(logic);
        logic.WriteList(instance, kind, nullptr);
    }

    /// The titles and then the rows, with "*" before the text of a cell that has an image.
    Rows show(const ObjectRef& instance, TaskKind kind, bool finished)
    {
        m_page.reset();
        m_page
            = pages().makeFileDetailsPage({vault, instance, kind, static_cast<std::int32_t>(window.winId())}, finished);
        const QAbstractItemModel* model = list().model();
        Rows out(1);
        for (int column = 0; column < model->columnCount(); ++column)
            out[0] += model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().toStdString() + "|";
        for (int row = 0; row < model->rowCount(); ++row) {
            std::string cells;
            for (int column = 0; column < model->columnCount(); ++column) {
                const QModelIndex cell = model->index(row, column);
                QString text = cell.data().toString();
                text.replace(QString::fromStdString(toUtf8(m_vault.path("."))), "<root>");
                cells += (cell.data(Qt::DecorationRole).isNull() ? "" : "*") + text.toStdString() + "|";
            }
            out.push_back(cells);
        }
        return out;
    }

    VListCtrl& list() { return *find<VListCtrl>(window, "files"); }

    zn::arkin::Place partA;
    zn::arkin::Place partB;

private:
    std::unique_ptr<TaskPage> m_page;
};

} // namespace

TEST_F(FileDetailsPage, ARunThatGoesOnShowsItsSelectionTheLastRecordFirst)
{
    const auto instance = run(TaskKind::Conversion);
    writeSelection(instance,
        {input(partA, "parts/a.zenprt", 1), input(partA, "parts/a.zenprt", 0), input(partB, "parts/b.zenprt", -1),
            input({9999, 1}, "parts/gone.pdf", 3)});
    const Rows rows = {
        "File Name|Version|Found in|",
        "*gone.pdf|3/-|*<root>\\parts|",
        "*b.zenprt|1/1|*<root>\\parts|",
        "*a.zenprt|2/2|*<root>\\parts|",
        "*a.zenprt|1/2|*<root>\\parts|",
    };
    for (const TaskKind kind : {TaskKind::General, TaskKind::Printing, TaskKind::Conversion})
        EXPECT_EQ(show(instance, kind, false), rows);

    // A click on a title sorts.
    const QHeaderView* header = list().header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(20, header->height() / 2));
    EXPECT_EQ(list().item(0).text(0), "a.zenprt");
    EXPECT_EQ(list().item(3).text(0), "gone.pdf");
}

TEST_F(FileDetailsPage, OpensWideEnoughForAllItsColumns)
{
    for (const TaskKind kind : {TaskKind::Conversion, TaskKind::Printing, TaskKind::General}) {
        for (const bool finished : {false, true}) {
            show(run(kind), kind, finished);
            QWidget& page = *list().parentWidget();
            page.resize(page.sizeHint());
            page.show();
            const QHeaderView& header = *list().header();
            EXPECT_GE(list().viewport()->width(), page.fontMetrics().averageCharWidth() * 30 * header.count());
            for (int column = 0; column < header.count(); ++column)
                EXPECT_GE(header.sectionSize(column), header.sectionSizeHint(column));
            tasks.remove(tasks.get(u"Nightly").id);
            task.reset();
        }
    }
}

TEST_F(FileDetailsPage, AFinishedConversionShowsEachOutputWithItsSource)
{
    const auto instance = run(TaskKind::Conversion);
    OutputRecord source = input(partA, "parts/a.zenprt", 0);
    writeResults(instance, TaskKind::Conversion, [&](FileLogic& logic) {
        logic.SetCurrentSource(&source);
        logic.NoteSavedFile(m_vault.path("out/a.step"), u"Default", false);
        logic.NoteSavedFile(m_vault.path("out/a.pdf"), u"Bolt, long", false);
        logic.NoteSavedFile(m_vault.path("out/run.log"), u"", true);
    });
    EXPECT_THAT(show(instance, TaskKind::Conversion, true),
        ElementsAre("Source File|Configuration|Version|Found in|Output File|",
            "*a.zenprt|Bolt, long|2/2|*<root>\\parts|*<root>\\out\\a.pdf|",
            "*a.zenprt|Default|2/2|*<root>\\parts|*<root>\\out\\a.step|"));
}

TEST_F(FileDetailsPage, AFinishedPrintShowsThePrinterOfEachItem)
{
    const auto instance = run(TaskKind::Printing);
    OutputRecord source = input(partB, "parts/b.zenprt", 1);
    writeResults(instance, TaskKind::Printing, [&](FileLogic& logic) {
        logic.SetCurrentSource(&source);
        logic.NotePrintedItem(u"Plotter A0", u"Sheet1");
        logic.NotePrintedItem(u"", u"Sheet2");
    });
    EXPECT_THAT(show(instance, TaskKind::Printing, true),
        ElementsAre("File Name|Configuration|Printer|Version|Found in|", "*b.zenprt|Sheet2||1/1|*<root>\\parts|",
            "*b.zenprt|Sheet1|*Plotter A0|1/1|*<root>\\parts|"));
    EXPECT_THAT(show(instance, TaskKind::General, true),
        ElementsAre("File Name|Configuration|Version|Found in|", "*b.zenprt|Sheet2|1/1|*<root>\\parts|",
            "*b.zenprt|Sheet1|1/1|*<root>\\parts|"));
}

TEST_F(FileDetailsPage, AFinishedRunThatKeepsNoOutputsShowsWhatItWasGiven)
{
    const auto instance = run(TaskKind::General);
    writeSelection(instance, {input(partA, "parts/a.zenprt", 1)});
    EXPECT_THAT(show(instance, TaskKind::General, true),
        ElementsAre("File Name|Configuration|Version|Found in|", "*a.zenprt||1/2|*<root>\\parts|"));
}

TEST_F(FileDetailsPage, ARunWithoutAListShowsNoneAndADamagedListIsTold)
{
    const auto instance = run(TaskKind::Conversion);
    EXPECT_EQ(show(instance, TaskKind::Conversion, true).size(), 1u);

    ASSERT_EQ(instance->SetValue(u"__selection_list", Text(u"<sels><sel>")), S_OK);
    Answers answers({QMessageBox::Ok});
    EXPECT_THAT(show(instance, TaskKind::Conversion, false), ElementsAre("File Name|Version|Found in|"));
    ASSERT_EQ(answers.shown().size(), 1);
    EXPECT_TRUE(answers.shown()[0].startsWith("The stored file list cannot be read")) << qPrintable(answers.shown()[0]);
}

} // namespace zn::test
