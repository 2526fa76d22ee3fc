#include "arkin/store/Codes.h"
#include "platform/Sqlite.h"

#include <new>
#include <soci/error.h>
#include <system_error>

namespace zn::arkin {

namespace {

struct Row {
    zn::Status status;
    StatusText text;
};

const Row rows[] = {
    {zn::S_OK, {"S_OK", "The method was successfully executed."}},
    {zn::S_FALSE, {"S_FALSE", "The method was successfully executed but returned 'false'."}},
    {zn::E_INVALIDARG, {"E_INVALIDARG", "An invalid argument was given to the method."}},
    {zn::E_POINTER, {"E_POINTER", "An invalid pointer was supplied to the method."}},
    {zn::E_NOTIMPL, {"E_NOTIMPL", "The called method is not implemented."}},
    {zn::E_FAIL, {"E_FAIL", "An unspecified error occurred."}},
    {zn::E_UNEXPECTED, {"E_UNEXPECTED", "An unspecified error occurred."}},
    {zn::E_OUTOFMEMORY, {"E_OUTOFMEMORY", "There is not enough memory for this operation."}},
    {zn::DISP_E_TYPEMISMATCH, {"DISP_E_TYPEMISMATCH", "The value has a type that a file card cannot hold."}},
    {E_ARK_PERMISSION_DENIED,
        {"E_ARK_PERMISSION_DENIED", "You do not have the permission to do this in the folder of the file."}},
    {E_ARK_NAME_ALREADY_EXISTS, {"E_ARK_NAME_ALREADY_EXISTS", "A file of that name exists in the folder already."}},
    {E_ARK_DATABASE, {"E_ARK_DATABASE", "The database could not be opened."}},
    {E_ARK_NOT_IN_VAULT, {"E_ARK_NOT_IN_VAULT", "The file or folder is not in the vault."}},
    {E_ARK_NO_SUCH_VERSION, {"E_ARK_NO_SUCH_VERSION", "The file has no such version."}},
    {E_ARK_NO_SUCH_VARIABLE, {"E_ARK_NO_SUCH_VARIABLE", "The vault has no such card variable."}},
    {E_ARK_CHECKED_OUT, {"E_ARK_CHECKED_OUT", "The file is checked out already."}},
    {E_ARK_CHECKED_OUT_ELSEWHERE,
        {"E_ARK_CHECKED_OUT_ELSEWHERE", "The file is checked out by another user or on another machine."}},
    {E_ARK_NOT_CHECKED_OUT, {"E_ARK_NOT_CHECKED_OUT", "The file is not checked out."}},
    {E_ARK_LOCAL_FILE_MISSING,
        {"E_ARK_LOCAL_FILE_MISSING", "The file has no local copy, so there is nothing to check in."}},
    {E_ARK_LOCAL_FILE_CHANGED,
        {"E_ARK_LOCAL_FILE_CHANGED",
            "The local copy holds changes that the vault does not know, and it was left as it is."}},
    {E_ARK_BAD_NAME, {"E_ARK_BAD_NAME", "The vault cannot hold a file or folder of that name."}},
    {E_ARK_ARCHIVE, {"E_ARK_ARCHIVE", "The archive of the vault could not be read or written."}},
    {E_ARK_DISK_FULL, {"E_ARK_DISK_FULL", "The disk is full."}},
    {zn::E_ARK_NO_DESKTOP, {"E_ARK_NO_DESKTOP", "There is no window here in which the vault could ask."}},
    {E_ARK_LOCAL_FILE_FAILED, {"E_ARK_LOCAL_FILE_FAILED", "The local copy of the file could not be read or written."}},
    {E_ARK_REFERENCED, {"E_ARK_REFERENCED", "Other files refer to the file by its path."}},
    {E_ARK_RUN_TAKEN_OVER, {"E_ARK_RUN_TAKEN_OVER", "Another worker has taken the run over."}},
    {E_ARK_RUNS_CROSS,
        {"E_ARK_RUNS_CROSS",
            "Another run works with this file and waits for a file of this run. Launch the task again "
            "when the other run has ended."}},
};

Failure tableFailure(zn::Status status)
{
    const StatusText* text = statusText(status);
    return {status, text ? text->sentence : "An unspecified error occurred."};
}

} // namespace

const StatusText* statusText(zn::Status status)
{
    for (const Row& row : rows) {
        if (row.status == status)
            return &row.text;
    }
    return nullptr;
}

Failure currentFailure()
{
    try {
        throw;
    } catch (const zn::StatusError& error) {
        return error.what()[0] ? Failure{error.status(), error.what()} : tableFailure(error.status());
    } catch (const soci::soci_error& error) {
        if (zn::isSqliteDiskFull(error))
            return {E_ARK_DISK_FULL, "The disk that holds the vault's database is full."};
        return {E_ARK_DATABASE, "The vault's database reported a failure: " + error.get_error_message() + "."};
    } catch (const std::bad_alloc&) {
        return tableFailure(zn::E_OUTOFMEMORY);
    } catch (const std::system_error& error) {
        return {zn::E_UNEXPECTED, "The system reported a failure: " + error.code().message() + "."};
    } catch (...) {
        return tableFailure(zn::E_UNEXPECTED);
    }
}

} // namespace zn::arkin
