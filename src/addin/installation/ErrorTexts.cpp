#include "addin/installation/ErrorTexts.h"

#include "addin/libraries/lexmgr/LexMgr.h"
#include "base/Format.h"

#include <cerrno>
#include <span>
#include <system_error>

namespace zn {

namespace {

/// A code (of the network: its low 16 bits) with the number and English text of its sentence.
struct Row {
    std::uint32_t code;
    int number;
    const char16_t* text;
};

constexpr Row errorRows[] = {
    {0x00000000, 1, u"The method was successfully executed."},
    {0x00000001, 2, u"The method was successfully executed but returned 'false'."},
    {0x80070057, 3, u"An invalid argument was given to the method."},
    {0x80004003, 4, u"An invalid pointer was supplied to the method."},
    {0x80004001, 5, u"The called method is not implemented."},
    {0x80004005, 6, u"An unspecified error occurred."},
    {0x8000FFFF, 6, u"An unspecified error occurred."},
    {0x8007000E, 7, u"There is not enough memory for this operation."},
    {0x80004002, 8, u"The object does not offer what was asked of it."},
    {0x80004004, 9, u"The operation was stopped."},
    {0x80010108, 10, u"The connection with the other program has been closed."},
    {0x80020003, 11, u"The object has no member of that name."},
    {0x80020005, 12, u"The value has a type that a file card cannot hold."},
    {0x8002000A, 13, u"The value is too large for its type."},
    {0x8002000B, 14, u"There is no entry of that number."},
    {0x8002000E, 15, u"The method was called with a wrong number of arguments."},
    {0x80040154, 16, u"The program that was asked for is not registered on this machine."},
    {0x80040203, 20, u"You do not have the permission to do this in the folder of the file."},
    {0x80040206, 21, u"The database could not be opened."},
    {0x80040207, 22, u"The vault's database reported a failure."},
    {0x8004020F, 23, u"A file of that name exists in the folder already."},
    {0x80040220, 24, u"The server was not found."},
    {0x80040221, 21, u"The database could not be opened."},
    {0x80040222, 25, u"The ODBC data source was not found."},
    {0x80040301, 30, u"The file or folder is not in the vault."},
    {0x80040302, 31, u"The file has no such version."},
    {0x80040303, 32, u"The vault has no such card variable."},
    {0x80040304, 33, u"The file is checked out already."},
    {0x80040305, 34, u"The file is checked out by another user or on another machine."},
    {0x80040306, 35, u"The file is not checked out."},
    {0x80040307, 36, u"The file has no local copy, so there is nothing to check in."},
    {0x80040308, 37, u"The local copy holds changes that the vault does not know, and it was left as it is."},
    {0x80040309, 38, u"The vault cannot hold a file or folder of that name."},
    {0x8004030A, 39, u"The archive of the vault could not be read or written."},
    {0x8004030B, 40, u"The disk is full."},
    {0x8004030C, 41, u"The local copy of the file could not be read or written."},
    {0x8004030D, 42, u"There is no window here in which the vault could ask."},
    {0x80040320, 43, u"Another worker has taken the run over."},
    {0x80040321, 44,
        u"Another run works with this file and waits for a file of this run. Launch the task again when the other run "
        u"has "
        u"ended."},
};

constexpr Row networkRows[] = {
    {12007, 60, u"The server name could not be resolved."},
    {12029, 61, u"The attempt to connect to the server failed."},
    {12030, 62, u"The connection with the server has been terminated."},
    {12031, 63, u"The connection with the server has been reset."},
    {12163, 64, u"The Internet connection has been lost"},
};

constexpr Row databaseRows[] = {
    {0x80040206, 207, u"The database could not be opened."},
    {0x80040220, 208, u"The server was not found."},
    {0x80040221, 207, u"The database could not be opened."},
    {0x80040222, 209, u"The ODBC data source was not found."},
};

constexpr Row networkFormat = {0, 70, u"The network reported the error %d."};
constexpr Row revisionControlFormat = {0, 71, u"Archive server revision control error %d (0x0%X)"};
constexpr Row unknownFormat = {0, 72, u"The error 0x%08X occurred."};

/// System failures by the numbers that status codes carry, which are older than this system's.
struct SystemError {
    std::uint32_t number;
    int here;
};
constexpr SystemError systemErrors[] = {
    {2, ENOENT},
    {3, ENOENT},
    {4, EMFILE},
    {5, EACCES},
    {8, ENOMEM},
    {15, ENODEV},
    {19, EROFS},
    {29, EIO},
    {30, EIO},
    {32, EBUSY},
    {33, EBUSY},
    {50, ENOTSUP},
    {80, EEXIST},
    {109, EPIPE},
    {112, ENOSPC},
    {145, ENOTEMPTY},
    {183, EEXIST},
    {206, ENAMETOOLONG},
    {267, ENOTDIR},
    {995, ECANCELED},
    {1223, ECANCELED},
    {1460, ETIMEDOUT},
};

const Row* find(std::span<const Row> rows, std::uint32_t code)
{
    for (const Row& row : rows) {
        if (row.code == code)
            return &row;
    }
    return nullptr;
}

Text lookUp(const Row& row, lexmgr::Library* strings, const char16_t* section = u"ErrorCodes",
    const char16_t* file = u"ArkInterface")
{
    return strings ? strings->TSS_internal(row.number, section, file, row.text) : row.text;
}

template <class... Arguments> Text format(const Row& row, lexmgr::Library* strings, const Arguments&... arguments)
{
    return formatText(toUtf8(lookUp(row, strings)).c_str(), arguments...);
}

constexpr std::uint32_t low16(std::uint32_t code) { return code & 0xFFFF; }
constexpr bool isNetwork(std::uint32_t code) { return code >= 0x80072EE0 && code <= 0x80072F8F; }
constexpr bool isRevisionControl(std::uint32_t code) { return code >= 0x80040432 && code <= 0x800404C4; }

Text systemText(std::uint32_t code, lexmgr::Library* strings)
{
    constexpr std::uint32_t systemFacility = 0x8007;
    if (code >> 16 == systemFacility) {
        for (const SystemError& error : systemErrors) {
            if (error.number == low16(code))
                return toText(std::system_category().message(error.here)) + u".";
        }
    }
    return format(unknownFormat, strings, code);
}

} // namespace

Text errorText(Status status, lexmgr::Library* strings)
{
    const auto code = static_cast<std::uint32_t>(status);
    if (isNetwork(code)) {
        const Row* row = find(networkRows, low16(code));
        return row ? lookUp(*row, strings) : format(networkFormat, strings, low16(code));
    }
    if (const Row* row = find(errorRows, code))
        return lookUp(*row, strings);
    if (isRevisionControl(code))
        return format(revisionControlFormat, strings, low16(code), low16(code));
    return systemText(code, strings);
}

Text databaseErrorText(Status status, lexmgr::Library* strings)
{
    constexpr Status databaseFailed = statusCode(0x80040207);
    if (const Row* row = find(databaseRows, static_cast<std::uint32_t>(status)))
        return lookUp(*row, strings, u"Database", u"Error Messages");
    return errorText(databaseFailed, strings);
}

} // namespace zn
