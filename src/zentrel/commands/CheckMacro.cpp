#include "zentrel/commands/Command.h"

#include "commandline/Json.h"
#include "contracts/objectmodel/TypeLibrary.h"
#include "platform/WholeFile.h"
#include "zentrel/application/MacroRunner.h"

#include <fmt/format.h>

namespace zn::zentrel::commands {

namespace {

zn::Text readMacro(const std::filesystem::path& file)
{
    constexpr std::uintmax_t largest = 64 << 20;
    return zn::fromCodePage(zn::readWholeFile(file, largest, "The macro"));
}

struct CheckMacro {
    std::filesystem::path file;
    bool json = false;

    void declare(Arguments& take)
    {
        take.option("FILE", file, "Macro text in the single-byte code page").required();
        take.flag("--json", json, "Print JSON");
    }

    int run() const
    {
        const auto errors = zn::language::check(readMacro(file), macroCompileOptions());
        auto list = commandline::Json::array();
        for (const auto& error : errors) {
            list.push_back({{"line", error.line}, {"column", error.column}, {"message", zn::toUtf8(error.message)},
                {"source", zn::toUtf8(error.sourceLine)}});
            if (!json)
                fmt::print("{}\n", faultText(file.string(), error.line, error.column, error.message, error.sourceLine));
        }
        if (json)
            fmt::print("{}\n", list.text());
        return errors.empty() ? zn::commandline::done : zn::commandline::failed;
    }
};

} // namespace

Subcommand checkMacroCommand()
{
    return subcommand<CheckMacro>("check-macro", "Checks a macro without running it; exit code 1 if it has errors");
}

} // namespace zn::zentrel::commands
