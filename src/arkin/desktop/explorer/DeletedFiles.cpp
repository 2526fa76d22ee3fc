#include "arkin/desktop/explorer/DeletedFiles.h"

#include "arkin/desktop/explorer/FileWork.h"
#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/RunTexts.h"
#include "arkin/store/Restore.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

/// The chosen ones, by their places in the list.
std::vector<DeletedFile> chosenOf(QWidget* window, const std::vector<DeletedFile>& files)
{
    QDialog dialog(window);
    dialog.setObjectName("deletedFiles");
    dialog.setWindowTitle(own("Deleted Files"));
    auto* const list = new QTreeWidget;
    list->setObjectName("deleted");
    list->setAccessibleName(own("Deleted Files"));
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setSelectionMode(QTreeWidget::ExtendedSelection);
    list->setHeaderLabels({own("Name"), own("Version"), own("Deleted"), own("User")});
    for (const DeletedFile& file : files)
        list->addTopLevelItem(new QTreeWidgetItem({shown(file.name), QString::number(file.latestVersion),
            momentText(file.deletedAt), QString::fromStdString(file.deletedBy)}));
    list->resizeColumnToContents(0);
    giveTitlesRoom(*list);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    auto* const restore = buttons->addButton(own("&Bring Back"), QDialogButtonBox::AcceptRole);
    restore->setObjectName("restore");
    restore->setEnabled(false);
    QObject::connect(list, &QTreeWidget::itemSelectionChanged, restore,
        [=] { restore->setEnabled(!list->selectedItems().isEmpty()); });
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* const layout = new QVBoxLayout(&dialog);
    layout->addWidget(list);
    layout->addWidget(buttons);
    resizeByFont(dialog, 90, 20);
    std::vector<DeletedFile> chosen;
    if (dialog.exec() == QDialog::Accepted)
        for (QTreeWidgetItem* item : list->selectedItems())
            chosen.push_back(files[static_cast<std::size_t>(list->indexOfTopLevelItem(item))]);
    return chosen;
}

} // namespace

bool restoreDeletedFiles(Vault& vault, QWidget* window, std::int32_t folderId)
{
    const auto files = deletedFiles(vault, folderId);
    if (files.empty()) {
        tell(window, own("Nothing that was deleted from this folder is left to be brought back."));
        return false;
    }
    const auto chosen = chosenOf(window, files);
    QStringList failures;
    for (const DeletedFile& file : chosen)
        zn::guarded([&] { restoreFile(vault, file); }, [&] { failures << shown(currentFailure().sentence); });
    tellAll(window, failures);
    return !chosen.empty();
}

} // namespace zn::arkin
