#pragma once

#include "base/Text.h"

#include <map>
#include <vector>

namespace zn {

/// Where a card value of an output comes from. Numbers are stored in tasks.
enum class CardSourceKind : std::int32_t {
    SourcePath = 1,   ///< the whole path, although administrators see "Source File Name"
    SourceFolder = 2, ///< the path without its last component
    Configuration = 3,
    Revision = 4,
    Version = 5,
    WorkflowState = 6,
    Now = 7,
    FreeText = 8,
    Variable = 100,
};

/// One line of the file card transfer table.
struct CardMapping {
    std::int32_t destVariableId = 0;
    std::int32_t sourceVariableId = 0; ///< of kind `Variable`
    CardSourceKind kind{};             ///< an unknown number stays and delivers nothing
    Text text;                         ///< of kind `FreeText`
};

/// Parses the text of `FileCardData`: lines "destination;kind;rest" ended by line feeds, an empty line ends it.
/// A line whose destination (or source variable) isn't in the vault is dropped. `variableIds` by exact name.
std::vector<CardMapping> parseCardMappings(const Text& text, const std::map<Text, std::int32_t>& variableIds);

} // namespace zn
