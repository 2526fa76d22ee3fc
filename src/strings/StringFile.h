#pragma once

#include "base/Text.h"

#include <map>
#include <string_view>

namespace zn {

/// The entries of one string file: texts by section and number.
class StringFile {
public:
    /// Null if the file has no such entry. Valid as long as the object.
    const Text* find(TextView section, int id) const;
    /// False if the entry is there already.
    bool add(const Text& section, int id, Text text);
    void remove(TextView section, int id);

private:
    std::map<Text, std::map<int, Text>, std::less<>> m_sections;
};

struct ReadStringFile {
    StringFile entries;
    /// What is wrong with the file, to follow its name in a sentence ("line 12 on: the line is no UTF-8 text."). Empty
    /// for a good file.
    Text problem;
};

/// Reads the content of a string file (docs/languages.md). A broken line ends the reading: the entries before it
/// count. A file of another format or version has no entries.
ReadStringFile readStringFile(std::string_view content);

} // namespace zn
