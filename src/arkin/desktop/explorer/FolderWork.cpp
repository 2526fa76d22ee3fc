#include "arkin/desktop/explorer/FolderWork.h"

#include "arkin/desktop/explorer/FolderTree.h"
#include "arkin/desktop/frame/Texts.h"
#include "arkin/store/MoveFiles.h"
#include "base/Paths.h"

#include <optional>
#include <QDialog>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

/// None if the user doesn't want it after all.
std::optional<zn::Text> askName(QWidget* window, const QString& title, const QString& label, const QString& present)
{
    bool wanted = false;
    const QString name = QInputDialog::getText(window, title, label, QLineEdit::Normal, present, &wanted).trimmed();
    if (!wanted || name.isEmpty() || name == present)
        return std::nullopt;
    return typed(name);
}

std::optional<std::int32_t> askFolder(Vault& vault, QWidget* window, std::int32_t present)
{
    QDialog dialog(window);
    dialog.setObjectName("moveTo");
    dialog.setWindowTitle(own("Move"));
    auto* const column = new QVBoxLayout(&dialog);
    auto* const folders = new FolderTree(vault);
    if (folders->setCurrentFolder(present))
        folders->expand(folders->currentIndex());
    column->addWidget(folders);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(own("Move Here"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    column->addWidget(buttons);
    resizeByFont(dialog, 50, 24);
    if (dialog.exec() != QDialog::Accepted || folders->currentFolder() == 0)
        return std::nullopt;
    return folders->currentFolder();
}

/// False if the user keeps everything where it is.
bool moveAsAgreed(
    Vault& vault, QWidget* window, const std::vector<FileMove>& files, const std::vector<FolderMove>& folders)
{
    try {
        moveInVault(vault, files, folders);
        return true;
    } catch (const zn::StatusError& error) {
        if (error.status() != E_ARK_REFERENCED)
            throw;
        if (QMessageBox::question(window, own("Move"), shown(error.what()) + "\n\n" + own("Move them all the same?"),
                QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
            != QMessageBox::Yes)
            return false;
    }
    moveInVault(vault, files, folders, BrokenReferences::Accept);
    return true;
}

zn::Text nameOf(Vault& vault, std::int32_t folderId) { return zn::pathFileName(vault.folders().pathOf(folderId)); }

/// Gives the folder another place; its number there.
std::int32_t change(Vault& vault, QWidget* window, const FolderMove& wanted)
{
    const zn::Text path = zn::pathAppend(vault.folders().pathOf(wanted.toParentId), wanted.toName);
    return moveAsAgreed(vault, window, {}, {wanted}) ? vault.folders().find(path).value_or(0) : 0;
}

std::int32_t makeFolder(Vault& vault, QWidget* window, std::int32_t folderId)
{
    const auto name = askName(window, own("New Folder"), own("&Name:"), {});
    if (!name)
        return 0;
    requireGoodNewName(*name);
    return vault.createFolder(vault.local().pathOf(folderId, *name));
}

std::int32_t renameFolder(Vault& vault, QWidget* window, std::int32_t folderId)
{
    const auto name = askName(window, own("Rename"), own("&Name:"), shown(nameOf(vault, folderId)));
    return name ? change(vault, window, {folderId, vault.folders().parentOf(folderId), *name}) : 0;
}

std::int32_t moveFolder(Vault& vault, QWidget* window, std::int32_t folderId)
{
    const auto target = askFolder(vault, window, vault.folders().parentOf(folderId));
    return target ? change(vault, window, {folderId, *target, nameOf(vault, folderId)}) : 0;
}

constexpr FolderWork works[] = {
    {"newFolder", "New Folder …", makeFolder},
    {"renameFolder", "Rename …", renameFolder},
    {"moveFolder", "Move …", moveFolder},
};

} // namespace

std::span<const FolderWork> folderWorks() { return works; }

bool renameFile(Vault& vault, QWidget* window, const Place& place)
{
    const auto name = askName(window, own("Rename"), own("&Name:"), shown(vault.file(place.fileId).name));
    return name && moveAsAgreed(vault, window, {{place, place.folderId, *name}}, {});
}

bool moveFiles(Vault& vault, QWidget* window, const std::vector<Place>& places, std::int32_t toFolderId)
{
    std::vector<FileMove> moves;
    for (const Place& place : places)
        moves.push_back({place, toFolderId, vault.file(place.fileId).name});
    return moveAsAgreed(vault, window, moves, {});
}

bool moveFiles(Vault& vault, QWidget* window, const std::vector<Place>& places)
{
    const auto target = places.empty() ? std::nullopt : askFolder(vault, window, places.front().folderId);
    return target && moveFiles(vault, window, places, *target);
}

} // namespace zn::arkin
