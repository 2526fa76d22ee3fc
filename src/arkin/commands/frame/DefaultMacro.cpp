#include "arkin/commands/frame/DefaultMacro.h"

#include "arkin/commands/frame/Session.h"
#include "base/Status.h"

#include <algorithm>
#include <fstream>
#include <iterator>

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
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (!stream.is_open() || stream.bad())
        throw zn::StatusError(zn::E_FAIL, "The macro " + file.string() + " can't be read.");
    return zn::fromCodePage(bytes);
}

zn::Text defaultMacro(zn::TaskKind kind)
{
    const auto row = std::ranges::find(macros, kind, &MacroRow::kind);
    const char* file = row != std::end(macros) ? row->file : "ExecuteScript.bas";
    return readMacro(programFolder() / "macros" / file);
}

} // namespace zn::arkin
