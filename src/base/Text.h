#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zn {

/// Text is counted in 16-bit code units everywhere inside the system. UTF-8 lives at edges only
/// (terminal, JSON, database driver), and the single-byte code page in macro files and logs.
using Text = std::u16string;
using TextView = std::u16string_view;

/// UTF-8 to text. Ill-formed bytes turn into U+FFFD.
Text toText(std::string_view utf8);
/// Text to UTF-8. A lone surrogate half turns into U+FFFD.
std::string toUtf8(TextView text);

/// Decimal form of a number.
Text numberText(std::int64_t number);

/// Comparison by simple case folding, code unit order: negative, 0 or positive.
int compareNoCase(TextView a, TextView b);
bool equalNoCase(TextView a, TextView b);
bool startsWithNoCase(TextView text, TextView prefix);
/// Length-preserving simple case folding, for keys of maps and database columns.
Text foldCase(TextView text);
Text toLower(TextView text);
Text toUpper(TextView text);

/// Replaces every occurrence of `what`, left to right, without looking at inserted text again.
/// An empty `what` replaces nothing.
void replaceAll(Text& text, TextView what, TextView with);
/// Splits at every `separator`; n separators give n + 1 pieces.
std::vector<Text> split(TextView text, char16_t separator);
Text trim(TextView text);
/// The text with CR LF at every line end, whether it had CR LF there, LF or CR.
Text withCrLf(TextView text);

/// Plain text-to-integer conversion: leading blanks, a sign, digits up to the first other character;
/// 0 if there are no digits. A number beyond 32 bits gives the nearest limit.
std::int32_t leadingInteger(TextView text);

/// The machine's narrow (single-byte) code page is Windows-1252 on every platform, so that a macro file
/// means the same on each worker. Unmappable characters turn into "?".
std::string toCodePage(TextView text);
Text fromCodePage(std::string_view bytes);
/// The same for what people read, such as a log with files' names: a character that the code page lacks turns into
/// its number, "<U+65E5>", which no file's name can hold by itself, and comes back from it.
std::string toReadableCodePage(TextView text);
Text fromReadableCodePage(std::string_view bytes);

} // namespace zn
