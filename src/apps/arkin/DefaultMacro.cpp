#include "DefaultMacro.h"

#include "base/Status.h"

#include <fstream>
#include <iterator>

namespace arkin {

namespace {

struct MacroRow {
    zn::TaskKind kind;
    const char* file;
};

constexpr MacroRow macros[] = {
    {zn::TaskKind::Conversion, "ConvertFiles.bas"},
    {zn::TaskKind::General, "ExecuteScript.bas"},
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
    for (const auto& row : macros) {
        if (row.kind != kind)
            continue;
        const auto program = std::filesystem::read_symlink("/proc/self/exe");
        const auto installed = program.parent_path().parent_path() / "share/zntask/macros" / row.file;
        return readMacro(
            std::filesystem::exists(installed) ? installed : std::filesystem::path(ARKIN_MACRO_FOLDER) / row.file);
    }
    throw zn::StatusError(
        zn::E_NOTIMPL, "This build has no default macro for printing; name your own as 'script' in the task's file.");
}

} // namespace arkin
