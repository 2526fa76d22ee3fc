#include "addin/files/CardMapping.h"

namespace zn {

namespace {

/// The text up to the next ";", which is cut off with it. Without one the whole rest.
Text takeField(TextView& line)
{
    const std::size_t end = line.find(u';');
    Text field(line.substr(0, end));
    line.remove_prefix(end == TextView::npos ? line.size() : end + 1);
    return field;
}

} // namespace

std::vector<CardMapping> parseCardMappings(const Text& text, const std::map<Text, std::int32_t>& variableIds)
{
    std::vector<CardMapping> mappings;
    for (const Text& piece : split(text, u'\n')) {
        if (piece.empty())
            break;
        TextView line = piece;
        const auto destination = variableIds.find(takeField(line));
        CardMapping mapping;
        mapping.kind = static_cast<CardSourceKind>(leadingInteger(takeField(line)));
        if (destination == variableIds.end())
            continue;
        mapping.destVariableId = destination->second;
        if (mapping.kind == CardSourceKind::FreeText)
            mapping.text = line;
        if (mapping.kind == CardSourceKind::Variable) {
            const auto source = variableIds.find(Text(line));
            if (source == variableIds.end())
                continue;
            mapping.sourceVariableId = source->second;
        }
        mappings.push_back(std::move(mapping));
    }
    return mappings;
}

} // namespace zn
