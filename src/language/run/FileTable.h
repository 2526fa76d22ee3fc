#pragma once

#include "language/FileAccess.h"
#include "language/tree/Steps.h"

#include <map>

namespace zn::language {

/// A file that the macro has opened under a number. Texts are stored in the single-byte code page.
class NumberedFile {
public:
    NumberedFile(std::unique_ptr<OpenedFile> file, Text path, OpenMode mode);

    const Text& path() const { return m_path; }
    OpenMode mode() const { return m_mode; }
    bool reads() const { return m_mode != OpenMode::Output && m_mode != OpenMode::Append; }

    void write(TextView text);
    /// Up to the next line end, which is taken. Raises 62 at the end of the file.
    Text readLine();
    /// One value as `Write #` writes it: without quotes or marks, ended by a comma or line end. Raises 62.
    Value readItem();
    Text readUnits(std::size_t count);
    bool atEnd();
    std::uint64_t size();
    std::uint64_t position();
    void seek(std::uint64_t position);
    /// Writes what is buffered and closes.
    void close();

    std::size_t column = 0; ///< of the next character on the line, for `Tab` and print zones

private:
    bool fill();
    void flush();
    void requireReading() const;
    int peekByte();

    std::unique_ptr<OpenedFile> m_file;
    Text m_path;
    OpenMode m_mode;
    std::string m_buffer;   ///< read ahead, or not yet written
    std::size_t m_next = 0; ///< in the read buffer
    bool m_ended = false;
};

/// The files of one machine by their numbers.
class FileTable {
public:
    explicit FileTable(FileAccess& files)
        : m_access(files)
    {
    }

    void open(std::int32_t number, const Text& path, OpenMode mode);
    NumberedFile& file(std::int32_t number);
    void close(std::int32_t number);
    /// Closes all; the first failure is raised when the rest is closed, too.
    void closeAll();
    std::int32_t freeNumber() const;
    bool isOpen(const Text& path) const;

private:
    FileAccess& m_access;
    std::map<std::int32_t, NumberedFile> m_files;
};

/// Which error a failed file operation is to the macro.
enum class FileOperation { Open, Delete, CreateFolder, Other };
/// Runs a file operation and turns its `StatusError` into the language's error.
template <class Work> auto withFileErrors(FileOperation operation, Work&& work);
[[noreturn]] void raiseFileError(FileOperation operation, const StatusError& failure);

template <class Work> auto withFileErrors(FileOperation operation, Work&& work)
{
    try {
        return work();
    } catch (const StatusError& failure) {
        raiseFileError(operation, failure);
    }
}

} // namespace zn::language
