#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace zn {

/// What kind of failure a document, a reader or a writer met: what a caller turns into an error number.
enum class ErrorKind {
    NotFound,        ///< the file, or a file that it refers to, isn't there
    NotReadable,     ///< the file is there, but the machine refuses to read it
    Damaged,         ///< empty, truncated, or not what its name says
    FutureVersion,   ///< written by a later version of this program
    Unsupported,     ///< the format isn't known, or can't hold what the document has
    Incomplete,      ///< only a part of what the file lists could be read
    Kernel,          ///< the geometry kernel failed or crashed on this file
    NotWritable,     ///< no permission, no room, no such folder
    InvalidArgument, ///< a name or number that the document doesn't know
};

/// A failure with one sentence for a person (UTF-8), which names the thing and says what is wrong.
class DocumentError : public std::runtime_error {
public:
    DocumentError(ErrorKind kind, const std::string& sentence)
        : std::runtime_error(sentence)
        , m_kind(kind)
    {
    }

    ErrorKind kind() const { return m_kind; }

private:
    ErrorKind m_kind;
};

/// The path as a sentence shows it: 'folder/name.ext' in single quotes.
std::string quoted(const std::filesystem::path& path);

} // namespace zn
