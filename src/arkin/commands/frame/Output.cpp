#include "arkin/commands/frame/Output.h"

#include <algorithm>
#include <fmt/chrono.h>
#include <iostream>

namespace zn::arkin {

namespace {

/// Characters of a UTF-8 text, as a terminal counts them for plain letters.
std::size_t width(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

} // namespace

void printTable(const std::vector<std::vector<std::string>>& rows, const std::string& none)
{
    if (rows.size() < 2) {
        std::cout << none << "\n";
        return;
    }
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], width(row[i]));
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i)
            line += row[i] + std::string(i + 1 < row.size() ? widths[i] - width(row[i]) + 2 : 0, ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        std::cout << line << "\n";
    }
}

void printJson(const Json& value) { std::cout << value.text() << "\n"; }

void printNote(const std::string& sentence)
{
    if (!sentence.empty())
        std::cerr << "Note: " << sentence << "\n";
}

std::string shownTime(std::int64_t seconds)
{
    return seconds == 0 ? "-" : fmt::format("{:%Y-%m-%d %H:%M:%S %Z}", fmt::localtime(seconds));
}

Json jsonTime(std::int64_t seconds)
{
    return seconds == 0 ? Json(nullptr) : Json(fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(seconds)));
}

Json jsonValue(const zn::Value& value)
{
    if (const auto* boolean = value.get<zn::BooleanValue>())
        return boolean->bits != 0;
    if (const auto* number = value.get<std::int32_t>())
        return *number;
    if (const auto* number = value.get<double>())
        return *number;
    return value.get<float>() ? Json(*value.get<float>()) : Json(shownValue(value));
}

std::string shownValue(const zn::Value& value)
{
    if (const auto* boolean = value.get<zn::BooleanValue>())
        return boolean->bits != 0 ? "true" : "false";
    return zn::toUtf8(value.toText());
}

std::string shownCount(std::int64_t number)
{
    auto text = std::to_string(number);
    for (auto i = static_cast<std::ptrdiff_t>(text.size()) - 3; i > 0; i -= 3)
        text.insert(static_cast<std::size_t>(i), 1, ' ');
    return text;
}

} // namespace zn::arkin
