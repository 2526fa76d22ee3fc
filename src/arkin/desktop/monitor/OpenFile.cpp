#include "arkin/desktop/monitor/OpenFile.h"

#include "arkin/store/GetFiles.h"

#include <QDesktopServices>
#include <QUrl>

namespace zn::arkin {

void openFile(Vault& vault, const zn::Text& path)
{
    const auto file = vault.local().toMachine(path);
    if (!std::filesystem::exists(file)) {
        const auto place = vault.find(path);
        if (!place)
            throw zn::StatusError(zn::E_FAIL, "There is no file " + file.string() + " any more.");
        const GetRequest request[] = {{*place, 0}};
        getFiles(vault, withReferences(vault, request, false).files);
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(file.string()))))
        throw zn::StatusError(zn::E_FAIL, "No program of this desktop opens " + file.string() + ".");
}

} // namespace zn::arkin
