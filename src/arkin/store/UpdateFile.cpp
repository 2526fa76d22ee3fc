#include "arkin/store/UpdateFile.h"

#include "arkin/store/CheckIn.h"
#include "arkin/store/CheckOut.h"
#include "arkin/store/Codes.h"
#include "arkin/store/GetFiles.h"
#include "platform/AtomicFile.h"

#include <system_error>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

void replaceCopy(const fs::path& path, const fs::path& source)
{
    try {
        zn::AtomicFile whole(path);
        fs::copy_file(source, whole.temporary(), fs::copy_options::overwrite_existing);
        fs::permissions(whole.temporary(), fs::perms::owner_write, fs::perm_options::add);
        whole.commit(zn::AtomicFile::Sync::No);
    } catch (const std::system_error& error) {
        throwFileFailure(E_ARK_LOCAL_FILE_FAILED, "Could not write", path, error.code().value());
    }
}

void requireFree(Vault& vault, const Place& place)
{
    const auto checkOut = vault.files().checkOut(place.fileId);
    if (!checkOut)
        return;
    if (!vault.isMine(*checkOut))
        throw checkedOutElsewhere(vault, *checkOut);
    throw zn::StatusError(
        E_ARK_CHECKED_OUT_ELSEWHERE, "The file is checked out by you here: check it in, or undo that first.");
}

} // namespace

bool updateFile(Vault& vault, const Place& place, const fs::path& source, zn::TextView comment)
{
    requireFree(vault, place);
    LocalFile file(source);
    if (readContent(file) == vault.version(place.fileId, 0).content)
        return false;
    const GetRequest latest{place, 0};
    getFiles(vault, {&latest, 1});
    checkOut(vault, place);
    try {
        replaceCopy(vault.local().toMachine(vault.pathOf(place)), source);
        checkIn(vault, planCheckIn(vault, {&place, 1}), comment);
    } catch (...) {
        undoCheckOut(vault, place.fileId);
        throw;
    }
    return true;
}

} // namespace zn::arkin
