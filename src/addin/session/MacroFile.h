#pragma once

#include "platform/FileSystem.h"
#include "platform/Processes.h"

namespace zn {

/// Removes a file at the end of a scope, whatever happened.
class FileRemoval {
public:
    FileRemoval(FileSystem& files, Text path)
        : m_files(files)
        , m_path(std::move(path))
    {
    }
    FileRemoval(const FileRemoval&) = delete;
    FileRemoval& operator=(const FileRemoval&) = delete;
    ~FileRemoval() { m_files.removeFile(m_path); }

private:
    FileSystem& m_files;
    Text m_path;
};

struct MacroFile {
    Text path;
    bool ready = false; ///< false if the file could not get its name; whatever stood there has to go all the same
};

/// Writes a macro for the application: a file in the user's temporary folder whose name begins with "TFR" and the
/// number of this process. Raises `StatusError` with a sentence.
MacroFile writeMacroFile(FileSystem& files, const Text& macroText);

/// Removes what processes that were killed have left of such files.
void removeLeftOverMacros(FileSystem& files, Processes& processes);

} // namespace zn
