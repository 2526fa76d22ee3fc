#include "arkin/desktop/explorer/FileWork.h"

#include "arkin/desktop/explorer/FolderWork.h"
#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/OpenFile.h"
#include "arkin/store/CheckIn.h"
#include "arkin/store/CheckOut.h"
#include "arkin/store/DeleteFile.h"
#include "arkin/store/GetFiles.h"

#include <QApplication>
#include <QClipboard>
#include <QInputDialog>
#include <QMessageBox>
#include <QProgressDialog>

namespace zn::arkin {

namespace {

using Places = std::vector<Place>;

/// Does it for one file after the other.
template <class Work> void eachFile(QWidget* window, const QString& title, const Places& places, Work&& work)
{
    QProgressDialog progress(title, own("Cancel"), 0, static_cast<int>(places.size()), window);
    progress.setWindowTitle(title);
    progress.setWindowModality(Qt::WindowModal);
    QStringList failures;
    for (const Place& place : places) {
        zn::guarded([&] { work(place); }, [&] { failures << shown(currentFailure().sentence); });
        progress.setValue(progress.value() + 1);
        if (progress.wasCanceled())
            break;
    }
    progress.close();
    tellAll(window, failures);
}

/// A file comes with what it refers to, so that it can be opened.
void getWhole(Vault& vault, const Place& place)
{
    const GetRequest request[] = {{place, 0}};
    getFiles(vault, withReferences(vault, request, false).files);
}

void get(Vault& vault, QWidget* window, const Places& places)
{
    eachFile(window, own("Get"), places, [&](const Place& place) { getWhole(vault, place); });
}

void takeOut(Vault& vault, QWidget* window, const Places& places)
{
    eachFile(window, own("Check Out"), places, [&](const Place& place) { checkOut(vault, place); });
}

void takeIn(Vault& vault, QWidget* window, const Places& places)
{
    bool wanted = false;
    const QString comment = QInputDialog::getText(
        window, own("Check In"), own("&Comment of the new versions:"), QLineEdit::Normal, {}, &wanted);
    if (!wanted)
        return;
    std::vector<LeftOut> leftOut;
    const CheckInPlan plan = planCheckIn(vault, places, &leftOut);
    const auto made = checkIn(vault, plan, typed(comment), &leftOut);
    QStringList sentences;
    for (const LeftOut& file : leftOut)
        sentences << shown(file.failure.sentence);
    for (const CheckedIn& version : made)
        if (!version.note.empty())
            sentences << QString::fromStdString(version.note);
    tellAll(window, sentences);
}

bool agreed(QWidget* window, const QString& title, const QString& question)
{
    return QMessageBox::question(window, title, question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
        == QMessageBox::Yes;
}

void giveUp(Vault& vault, QWidget* window, const Places& places)
{
    if (agreed(window, own("Undo Check-Out"),
            places.size() == 1
                ? own("Put this file back to its latest version? What was changed in it here is lost.")
                : own("Put %1 files back to their latest versions? What was changed in them here is lost.")
                      .arg(places.size())))
        eachFile(window, own("Undo Check-Out"), places, [&](const Place& place) { undoCheckOut(vault, place.fileId); });
}

void remove(Vault& vault, QWidget* window, const Places& places)
{
    if (agreed(window, own("Delete"),
            places.size() == 1 ? own("Delete this file? Its versions stay, and “Deleted Files” brings it back.")
                               : own("Delete %1 files? Their versions stay, and “Deleted Files” brings them back.")
                                     .arg(places.size())))
        eachFile(window, own("Delete"), places, [&](const Place& place) { deleteFile(vault, place); });
}

void openOutside(Vault& vault, QWidget* window, const Places& places)
{
    eachFile(window, own("Open"), places, [&](const Place& place) { openFile(vault, vault.pathOf(place)); });
}

void copyPath(Vault& vault, QWidget*, const Places& places)
{
    QStringList paths;
    for (const Place& place : places)
        paths << QString::fromStdString(vault.local().toMachine(vault.pathOf(place)).string());
    QApplication::clipboard()->setText(paths.join('\n'));
}

void rename(Vault& vault, QWidget* window, const Places& places)
{
    for (const Place& place : places)
        if (!renameFile(vault, window, place))
            return;
}

void moveElsewhere(Vault& vault, QWidget* window, const Places& places) { moveFiles(vault, window, places); }

constexpr FileWork works[] = {
    {"get", "&Get", Qt::CTRL | Qt::Key_G, true, false, get},
    {"checkOut", "Check &Out", Qt::CTRL | Qt::Key_E, true, true, takeOut},
    {"checkIn", "Check &In …", Qt::CTRL | Qt::Key_I, true, true, takeIn},
    {"undo", "Undo Check-Out …", Qt::Key_unknown, true, true, giveUp},
    {"open", "O&pen", Qt::Key_Return, true, false, openOutside},
    {"copyPath", "Copy Path", Qt::CTRL | Qt::SHIFT | Qt::Key_C, false, false, copyPath},
    {"rename", "Rena&me …", Qt::Key_F2, false, true, rename},
    {"move", "Mo&ve …", Qt::Key_unknown, false, true, moveElsewhere},
    {"delete", "&Delete …", Qt::Key_Delete, false, true, remove},
};

} // namespace

std::span<const FileWork> fileWorks() { return works; }

std::filesystem::path localCopy(Vault& vault, const Place& place)
{
    auto path = vault.local().toMachine(vault.pathOf(place));
    if (!std::filesystem::exists(path))
        getWhole(vault, place);
    return path;
}

void tellAll(QWidget* window, QStringList sentences)
{
    constexpr qsizetype shownAtMost = 12;
    if (sentences.isEmpty())
        return;
    const auto more = sentences.size() - shownAtMost;
    if (more > 0)
        sentences = sentences.first(shownAtMost) << own("… and %1 more.").arg(more);
    tell(window, sentences.join('\n'));
}

} // namespace zn::arkin
