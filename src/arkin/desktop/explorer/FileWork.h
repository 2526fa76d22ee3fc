#pragma once

#include "arkin/store/Vault.h"

#include <filesystem>
#include <QKeySequence>
#include <span>
#include <vector>

class QWidget;

namespace zn::arkin {

/// Something that people do with chosen files: a button and an entry of the files' menu. One file's failure keeps no
/// other one from it; what failed is told in sentences at the end. Long work shows how far it is, and can be stopped
/// between files.
struct FileWork {
    const char* name = "";
    const char* text = "";
    QKeyCombination key = Qt::Key_unknown; ///< `Qt::Key_unknown` for none
    bool onToolBar = false;
    bool changesVault = false; ///< the folder is to be read again
    void (*work)(Vault& vault, QWidget* window, const std::vector<Place>& places) = nullptr;
};

std::span<const FileWork> fileWorks();

/// The file's local copy, which is brought if it isn't there, with all that it refers to.
std::filesystem::path localCopy(Vault& vault, const Place& place);

/// Shows the sentences in one box, the first dozen of many; none for none.
void tellAll(QWidget* window, QStringList sentences);

} // namespace zn::arkin
