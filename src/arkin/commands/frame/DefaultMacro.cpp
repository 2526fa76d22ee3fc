#include "arkin/commands/frame/DefaultMacro.h"

#include "arkin/commands/frame/Session.h"
#include "platform/WholeFile.h"

#include <algorithm>

namespace zn::arkin {

namespace {

struct MacroRow {
    zn::TaskKind kind;
    const char* file;
};

constexpr MacroRow macros[] = {
    {zn::TaskKind::Conversion, "ConvertFiles.bas"},
    {zn::TaskKind::Printing, "PrintFiles.bas"},
};

} // namespace

zn::Text readMacro(const std::filesystem::path& file)
{
    constexpr std::uintmax_t largest = 4 << 20; // as large as one becomes when its placeholders are filled in
    return zn::fromCodePage(zn::readWholeFile(file, largest, "The macro"));
}

zn::Text defaultMacro(zn::TaskKind kind)
{
    const auto row = std::ranges::find(macros, kind, &MacroRow::kind);
    const char* file = row != std::end(macros) ? row->file : "ExecuteScript.bas";
    return readMacro(programFolder() / "macros" / file);
}

} // namespace zn::arkin
