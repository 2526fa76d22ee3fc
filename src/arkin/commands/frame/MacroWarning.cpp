#include "arkin/commands/frame/MacroWarning.h"

#include <algorithm>

namespace zn::arkin {

namespace {

zn::TextView lineOf(zn::TextView source, std::int32_t number)
{
    std::size_t start = 0;
    for (std::int32_t line = 1; line < number && start < source.size(); ++line) {
        start = std::min(source.find_first_of(u"\r\n", start), source.size());
        start += source.substr(start).starts_with(u"\r\n") ? 2 : 1;
    }
    start = std::min(start, source.size());
    return source.substr(start, std::min(source.find_first_of(u"\r\n", start), source.size()) - start);
}

} // namespace

std::string shownWarning(const zn::ArkMacroWarning& warning, zn::TextView source)
{
    const auto line = lineOf(source, warning.line);
    std::string text = std::to_string(warning.line) + ":" + std::to_string(warning.column) + ": "
        + zn::toUtf8(warning.sentence) + "\n    " + zn::toUtf8(line) + "\n    ";
    for (const char16_t unit : line.substr(0, static_cast<std::size_t>(std::max(warning.column, 1)) - 1))
        text += unit == u'\t' ? '\t' : ' ';
    return text + "^";
}

commandline::Json toJson(const zn::ArkMacroWarning& warning, zn::TextView source)
{
    return {{"line", warning.line}, {"column", warning.column}, {"message", zn::toUtf8(warning.sentence)},
        {"source", zn::toUtf8(lineOf(source, warning.line))}};
}

} // namespace zn::arkin
