#pragma once

#include "strings/StringFile.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn {

/// The string files of one language, each read when it is first asked for.
class StringTable {
public:
    /// `folder` holds a folder for each language.
    StringTable(const std::filesystem::path& folder, const std::string& language);

    /// Null if the language has no such text, or one whose placeholders ("%s", "%d") differ from those of the default
    /// text: it would print something else than meant. Valid as long as the object.
    const Text* find(TextView file, TextView section, int id, TextView defaultText);

    /// The sentences about broken files and entries since the last call.
    std::vector<Text> takeProblems();

private:
    StringFile& entriesOf(TextView file);
    StringFile read(TextView file);

    std::filesystem::path m_folder;
    std::map<Text, StringFile, std::less<>> m_files;
    std::vector<Text> m_problems;
};

} // namespace zn
