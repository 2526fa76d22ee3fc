#include "arkin/desktop/explorer/VersionMenu.h"

#include "arkin/desktop/explorer/CompareDialog.h"
#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/OpenFile.h"
#include "arkin/store/CopyOut.h"
#include "arkin/store/Restore.h"
#include "arkin/store/Vault.h"

#include <QDir>
#include <QMenu>
#include <QMessageBox>

namespace zn::arkin {

namespace {

/// In a folder of its own, which stays until the desktop cleans its temporary files: another program has it open.
void openCopy(Vault& vault, const GetRequest& request)
{
    const std::string name = "arkin-" + std::to_string(request.place.fileId) + "-" + std::to_string(request.version);
    const std::filesystem::path folder = QDir::temp().filePath(QString::fromStdString(name)).toStdString();
    const auto copies = copyOut(vault, withReferences(vault, {&request, 1}, true).files, folder, true);
    openFile(vault, vault.local().fromMachine(copies.front()));
}

} // namespace

bool showVersionMenu(const DailyHost& host, QWidget* window, const Place& place, std::int32_t version, const QPoint& at)
{
    Vault& vault = *host.tasks.opened;
    const std::int32_t latest = vault.file(place.fileId).latestVersion;
    QMenu menu;
    menu.setObjectName("versionMenu");
    const auto add = [&menu](const char* name, const QString& text) {
        QAction* const action = menu.addAction(text);
        action->setObjectName(name);
        return action;
    };
    const QAction* const get = add("getVersion", own("&Get This Version"));
    const QAction* const open = add("openVersion", own("&Open a Copy"));
    QAction* const compare = add("compareVersion", own("&Compare with the Latest …"));
    QAction* const restore = add("restoreVersion", own("&Make It the Newest …"));
    for (QAction* action : {compare, restore})
        action->setEnabled(version != latest);
    const QAction* const chosen = menu.exec(at);
    const GetRequest request{place, version};
    if (!chosen)
        return false;
    if (chosen == get)
        getFiles(vault, {&request, 1});
    if (chosen == open)
        openCopy(vault, request);
    if (chosen == compare)
        CompareDialog(host, place, version, latest, window).exec();
    if (chosen != restore)
        return false;
    const auto answer = QMessageBox::question(window, own("Versions"),
        own("Make the content of version %1 the newest version of “%2”? All versions stay.")
            .arg(version)
            .arg(shown(vault.file(place.fileId).name)));
    if (answer != QMessageBox::Yes)
        return false;
    restoreVersion(vault, place, version);
    return true;
}

} // namespace zn::arkin
