#pragma once

#include "arkin/commands/frame/Session.h"
#include "base/Value.h"
#include "commandline/Json.h"

#include <string>
#include <vector>

namespace zn::arkin {

using commandline::Json;

/// Rows of columns, aligned; the first row is the heading. Nothing is printed for a heading alone but `none`.
void printTable(const std::vector<std::vector<std::string>>& rows, const std::string& none);
void printJson(const Json& value);
/// A sentence for a person who can do without it, to the error stream; nothing for an empty one.
void printNote(const std::string& sentence);
/// "2018-05-03 14:07:09 CEST", local time with its zone; a dash for 0.
std::string shownTime(std::int64_t seconds);
/// "2018-05-03T12:07:09Z"; null for 0.
Json jsonTime(std::int64_t seconds);
/// A task's or a card's value: a number, a boolean or a text.
Json jsonValue(const zn::Value& value);
std::string shownValue(const zn::Value& value);
/// "1,234 bytes" with a blank instead of the comma: "1 234".
std::string shownCount(std::int64_t number);

} // namespace zn::arkin
