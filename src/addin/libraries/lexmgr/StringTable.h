#pragma once

#include "addin/libraries/lexmgr/StringFile.h"

#include <filesystem>
#include <string>
#include <vector>

namespace lexmgr {

/// The string files of one language, each read when it is first asked for.
class StringTable {
public:
    /// `folder` holds a folder for each language.
    StringTable(const std::filesystem::path& folder, const std::string& language);

    /// Null if the language has no such text, or one whose placeholders ("%s", "%d") differ from those of the default
    /// text: it would print something else than meant. Valid as long as the object.
    const zn::Text* find(zn::TextView file, zn::TextView section, int id, zn::TextView defaultText);

    /// The sentences about broken files and entries since the last call.
    std::vector<zn::Text> takeProblems();

private:
    StringFile& entriesOf(zn::TextView file);
    StringFile read(zn::TextView file);

    std::filesystem::path m_folder;
    std::map<zn::Text, StringFile, std::less<>> m_files;
    std::vector<zn::Text> m_problems;
};

} // namespace lexmgr
