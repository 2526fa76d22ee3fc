#include "addin/pages/selection/SelectionDlg.h"

#include "addin/pages/lists/VListCtrl.h"
#include "tests/support/pages/PageFixture.h"

#include <gmock/gmock.h>
#include <QPushButton>

namespace zn::test {

using ::testing::AllOf;

namespace {

class SelectionDlg : public PageFixture {
protected:
    SelectionDlg()
    {
        partA = m_vault.addReleased("parts/a.zenprt", "1");
        drawing = m_vault.addReleased("b.zendrw", "1");
        m_vault.change(partA, "parts/a.zenprt", "2");
        dialog = std::make_unique<CSelectionDlg>(pages().environment(), &window, vault, u"Nightly");
        dialog->show();
        dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }

    void addFiles(const std::vector<Text>& paths)
    {
        browser.files = paths;
        click(find<QPushButton>(*dialog, "addFiles"));
    }
    void addFolder(const Text& path)
    {
        browser.folder = path;
        click(find<QPushButton>(*dialog, "addFolder"));
    }
    VListCtrl& list() { return *find<VListCtrl>(*dialog, "selection"); }
    std::vector<std::string> rows()
    {
        std::vector<std::string> out;
        for (int i = 0; i < list().itemCount(); ++i)
            out.push_back(list().item(i).text(0).toStdString());
        return out;
    }
    /// "type id/folder version path" of each record, with the vault's root as "<root>".
    std::vector<std::string> records()
    {
        Text root;
        vault->GetRootFolderPath(root);
        std::vector<std::string> out;
        for (ArkSelItem item : dialog->GetSelection()) {
            replaceAll(item.path, root, u"<root>");
            out.push_back((item.itemType == ArkItemType::File ? "file " : "folder ") + std::to_string(item.fileId) + "/"
                + std::to_string(item.folderId) + " " + std::to_string(item.version) + " " + toUtf8(item.path));
        }
        return out;
    }
    static std::string fileRecord(const zn::arkin::Place& place, const std::string& more)
    {
        return "file " + std::to_string(place.fileId) + "/" + std::to_string(place.folderId) + " " + more;
    }

    zn::arkin::Place partA;
    zn::arkin::Place drawing;
    std::unique_ptr<CSelectionDlg> dialog;
};

} // namespace

TEST_F(SelectionDlg, FilesAndFoldersBecomeRecordsInTheOrderOfTheirPaths)
{
    EXPECT_EQ(dialog->windowTitle(), "Select Files and Folders for Nightly");
    EXPECT_EQ(
        CSelectionDlg(pages().environment(), nullptr, vault, u"").windowTitle(), "Select Files and Folders for Task");
    addFiles({m_vault.path("parts/a.zenprt"), m_vault.path("b.zendrw")});
    EXPECT_EQ(browser.asked, "several|Select Files");
    addFolder(m_vault.path("parts"));
    EXPECT_EQ(browser.asked, "Please select a folder:");
    EXPECT_THAT(rows(), ElementsAre("\\parts\\a.zenprt", "\\b.zendrw", "\\parts"));
    const std::string folder = std::to_string(partA.folderId);
    EXPECT_THAT(records(),
        ElementsAre(fileRecord(drawing, "1 <root>\\b.zendrw"), "folder " + folder + "/" + folder + " 0 <root>\\parts",
            fileRecord(partA, "2 <root>\\parts\\a.zenprt")));
}

TEST_F(SelectionDlg, TheSameFileTwiceIsTwoRowsAndOneRecord)
{
    addFiles({m_vault.path("b.zendrw"), m_vault.path("parts/a.zenprt")});
    addFiles({m_vault.path("b.zendrw")});
    EXPECT_THAT(rows(), ElementsAre("\\b.zendrw", "\\parts\\a.zenprt", "\\b.zendrw"));
    EXPECT_EQ(records().size(), 2u);

    auto* remove = find<QPushButton>(*dialog, "remove");
    EXPECT_FALSE(remove->isEnabled());
    list().setFocus();
    press(&list(), Qt::Key_Home);
    EXPECT_TRUE(remove->isEnabled());
    press(&list(), Qt::Key_Delete);
    EXPECT_THAT(rows(), ElementsAre("\\parts\\a.zenprt", "\\b.zendrw"));
    EXPECT_THAT(records(), ElementsAre(fileRecord(partA, "2 <root>\\parts\\a.zenprt")));
    list().selectAll();
    click(remove);
    EXPECT_TRUE(rows().empty() && records().empty());
    EXPECT_FALSE(remove->isEnabled());
}

TEST_F(SelectionDlg, OkWantsARow)
{
    {
        Answers answers({QMessageBox::Ok});
        click(find<QPushButton>(*dialog, "ok"));
        EXPECT_EQ(answers.shown(), QStringList("Please select at least one folder or file."));
    }
    EXPECT_TRUE(dialog->isVisible());
    addFolder(m_vault.path("parts"));
    press(&list(), Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(SelectionDlg, ACancelledBrowserChangesNothingAndAFailureIsTold)
{
    addFiles({});
    addFolder(u"");
    EXPECT_TRUE(rows().empty());
    vault->setDesktop(nullptr);
    Answers answers({QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok});
    addFiles({m_vault.path("b.zendrw")});
    addFolder(m_vault.path("parts"));
    vault->setDesktop(&browser);
    // The walk ends at the failure; what stands before it stays.
    m_vault.vault.permissions().set(partA.folderId, u"anna", {false, true, true});
    addFiles({m_vault.path("b.zendrw"), m_vault.path("parts/a.zenprt"), m_vault.path("b.zendrw")});
    EXPECT_THAT(rows(), ElementsAre("\\b.zendrw"));
    m_vault.vault.permissions().set(partA.folderId, u"anna", {true, true, true});
    addFiles({m_vault.path("gone.zenprt"), m_vault.path("parts/a.zenprt")});
    EXPECT_THAT(rows(), ElementsAre("\\b.zendrw", "\\parts\\a.zenprt"));
    EXPECT_EQ(answers.shown()[0], answers.shown()[1]);
    EXPECT_NE(answers.shown()[1], answers.shown()[2]);
    EXPECT_THAT(answers.shown()[3].toStdString(), AllOf(HasSubstr("are not in the vault"), HasSubstr("gone.zenprt")));
}

TEST_F(SelectionDlg, TheFilterOffersEveryGroupOrDrawingsAlone)
{
    addFiles({});
    const QStringList parts = QString::fromStdString(browser.askedFilter).split('|');
    ASSERT_EQ(parts.size(), 2 * 29 + 1);
    EXPECT_EQ(parts.last(), "");
    struct Row {
        int number;
        const char* label;
        const char* patterns;
    };
    for (const Row& row : {Row{1, "Zentrel Files (*.zenasm;*.zenprt;*.zendrw)", "*.zenasm; *.zenprt; *.zendrw"},
             Row{11, "Parasolid (*.x_t;*.x_b;*.xmt_txt;*.xmt_bin)", "*.x_t; *.x_b; *.xmt_txt; *.xmt_bin"},
             Row{19, "ProE Part (*.prt;*.prt;*.xpr)", "*.prt; *.prt; *.xpr"}, Row{29, "All files (*.*)", "*.*"}}) {
        EXPECT_EQ(parts[2 * row.number - 2], row.label);
        EXPECT_EQ(parts[2 * row.number - 1], row.patterns);
    }
    CSelectionDlg drawings(pages().environment(), &window, vault, u"", true);
    drawings.AddFiles();
    EXPECT_EQ(browser.askedFilter, "ZENTREL Drawing (*.zendrw)|*.zendrw|");
}

} // namespace zn::test
