#include "tests/endtoend/Plant.h"

#include "contracts/host/ArkBatch.h"
#include "platform/Sqlite.h"

#include <algorithm>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QTreeView>
#include <sys/wait.h>

namespace zn::test {

namespace {

/// The home of the programs that a test starts, and of the add-in in this process.
Home homeIn(const std::filesystem::path& folder)
{
    Home home = Home::open(folder / "home");
    home.passToChildren();
    return home;
}

} // namespace

Plant::Plant()
    : machine(homeIn(folder.path()))
{
    run("zentrel register");
    run("arkin addin register " ZN_BIN_DIR "/libZNTaskAddIn.so");
    run("arkin vault create Plant --root " + (folder / "vault").string());
    const std::string samples = ZN_SOURCE_DIR "/samples/";
    run("arkin add " + samples + "Bracket.zenprt " + samples + "Stand.zenasm " + samples + "Чертёж.zendrw --to Models");
    run("arkin registry set 'machine\\SOFTWARE\\Zentrel\\Printers\\Paper folder' Folder '"
        + toUtf8(machine.files().fromMachine(folder / "prints")) + "'");
    std::filesystem::create_directory(folder / "prints");

    m_store = std::make_unique<zn::arkin::Store>(sqliteConnection(machine.home().databaseFile()),
        machine.home().archiveFolder(), machine.files(), machine.clock());
    m_vault = std::make_unique<zn::arkin::Vault>(*m_store, *m_store->findVault(u"Plant"));
    m_desktop = std::make_unique<zn::arkin::HostDesktop>(zn::arkin::Display{"offscreen", {}}, true);
    m_object = std::make_shared<zn::arkin::VaultObject>(*m_vault);
    m_object->setDesktop(m_desktop.get());

    refer("Stand.zenasm", "Bracket.zenprt");
    refer("Чертёж.zendrw", "Stand.zenasm");
    run("arkin checkout " + model("Bracket.zenprt").string());
    run("arkin checkin " + model("Bracket.zenprt").string());
}

std::string Plant::run(const std::string& command)
{
    std::string output;
    FILE* const pipe = popen(("PATH=" ZN_BIN_DIR ":/usr/bin:/bin; " + command + " 2>&1").c_str(), "r");
    char buffer[4096];
    for (std::size_t count; (count = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        output.append(buffer, count);
    const int status = pclose(pipe);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << command << "\n" << output;
    return output;
}

void Plant::refer(const std::string& from, const std::string& to)
{
    run("arkin checkout " + model(from).string());
    ObjectRef utility;
    ASSERT_EQ(m_object->CreateUtility(ArkUtil_BatchReference, utility), S_OK);
    const auto batch = query<IArkBatchReference>(utility);
    const ArkSelItem target = selected(to);
    bool needsCommit = false;
    ASSERT_EQ(batch->AddReferences(selected(from).fileId, {{target.fileId, target.folderId}}), S_OK);
    ASSERT_EQ(batch->CreateTree(0, needsCommit), S_OK);
    ASSERT_EQ(batch->Commit(needsCommit), S_OK);
    run("arkin checkin " + model(from).string());
}

ArkSelItem Plant::selected(const std::string& name)
{
    const Text path = machine.files().fromMachine(model(name));
    const auto place = m_vault->find(path);
    if (!place)
        throw std::runtime_error(name + " isn't in the vault.");
    return {place->fileId, place->folderId, path, u"", ArkItemType::File, -1};
}

zn::arkin::TaskHost Plant::host()
{
    return {m_store->database(), m_vault->info().id, m_object, machine.registry(), machine.files(), machine.clock(),
        u"anna", m_vault.get()};
}

void Plant::edit(const Text& task, const Answers::Answer& answer)
{
    zn::arkin::TaskStore tasks(m_store->database(), m_vault->info().id);
    zn::arkin::TaskSetup setup(host(), tasks.get(task));
    Answers answers({answer});
    EXPECT_TRUE(m_desktop->editTask(setup));
    EXPECT_TRUE(answers.allUsed()) << answers.shown().join("\n").toStdString();
}

std::int32_t Plant::launch(const Text& task, ArkSelection selection, std::vector<Answers::Answer> answers)
{
    zn::arkin::TaskStore tasks(m_store->database(), m_vault->info().id);
    zn::arkin::LaunchFlow flow(host(), tasks.get(task), std::move(selection));
    flow.launchAnyway(); // what can't go well shall be met by the night
    Answers expected(std::move(answers));
    const auto launched = m_desktop->launchTask(flow);
    EXPECT_TRUE(expected.allUsed()) << expected.shown().join("\n").toStdString();
    if (!launched)
        throw std::runtime_error("The launch made no run.");
    return launched->id;
}

zn::arkin::RunInfo Plant::launchAndWork(const Text& task, ArkSelection selection, std::vector<Answers::Answer> answers)
{
    const std::int32_t id = launch(task, std::move(selection), std::move(answers));
    run("arkin worker --once");
    return zn::arkin::RunStore(m_store->database(), m_vault->info().id).get(id);
}

void Plant::inWindow(
    const char* name, const std::function<void(QWidget& window)>& work, const std::function<void()>& show)
{
    QTimer::singleShot(0, [&] {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == name) {
                work(*window);
                window->close();
                return;
            }
        ADD_FAILURE() << "There is no such window.";
    });
    show();
}

void Plant::explore(const std::string& shownFolder, const std::function<void(QWidget& window)>& work)
{
    const auto folderId = m_vault->findFolder(machine.files().fromMachine(folder / "vault" / shownFolder));
    ASSERT_TRUE(folderId);
    inWindow("explorer", work, [&] { m_desktop->showExplorer(host(), *folderId, folder / "cache"); });
}

void Plant::monitor(std::int32_t runId, const std::function<void(QWidget& window)>& work)
{
    inWindow("monitor", work, [&] { m_desktop->showMonitor(host(), runId, folder / "cache"); });
}

void Plant::removeFromVault(const std::string& name)
{
    std::shared_ptr<IArkFolder> in;
    std::shared_ptr<IArkFile> file;
    ASSERT_EQ(m_object->GetFileFromPath(machine.files().fromMachine(model(name)), &in, file), S_OK);
    std::int32_t id = 0;
    ASSERT_EQ(file->GetId(id), S_OK);
    ASSERT_EQ(in->DeleteFile(0, id, 0), S_OK);
}

std::vector<std::string> Plant::details(std::int32_t runId)
{
    const std::string root = toUtf8(machine.files().fromMachine(folder / "vault"));
    std::vector<std::string> lines;
    const auto readList = [&](QWidget& dialog) {
        const auto& model = *dialog.findChild<QTreeView*>()->model();
        for (int row = 0; row < model.rowCount(); ++row) {
            std::string line;
            for (int column = 0; column < model.columnCount(); ++column)
                line += (column == 0 ? "" : " | ") + model.index(row, column).data().toString().toStdString();
            for (std::size_t at; (at = line.find(root)) != std::string::npos;)
                line.replace(at, root.size(), "…");
            lines.push_back(line);
        }
        dialog.close();
    };
    zn::arkin::TaskDetails look(host(), runId);
    Answers answers({readList});
    m_desktop->showDetails(look);
    EXPECT_TRUE(answers.allUsed());
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::vector<std::string> Plant::printed()
{
    std::vector<std::string> lines;
    for (const auto& entry : std::filesystem::directory_iterator(folder / "prints")) {
        const std::string pages = run("pdfinfo '" + entry.path().string() + "' | sed -n 's/^Pages: *//p'");
        lines.push_back(entry.path().stem().string() + ": " + pages.substr(0, pages.find('\n')));
        std::filesystem::remove(entry.path());
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

void Plant::turnTo(QWidget& dialog, const QString& title)
{
    auto* titles = find<QListWidget>(dialog, "pageTitles");
    const auto rows = titles->findItems(title, Qt::MatchExactly);
    if (rows.isEmpty())
        throw std::runtime_error("The dialog has no page " + title.toStdString() + ".");
    titles->setCurrentItem(rows.front());
}

void Plant::pressOk(QWidget& dialog)
{
    auto* button = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    QTimer::singleShot(0, button, [button] { button->click(); });
}

} // namespace zn::test
