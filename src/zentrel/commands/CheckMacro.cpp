#include "zentrel/commands/Command.h"

#include "contracts/objectmodel/TypeLibrary.h"

#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace zentrel::commands {

namespace {

zn::Text readMacro(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    // A folder can be opened but not read.
    if (!stream || !std::filesystem::is_regular_file(file))
        throw std::runtime_error(
            fmt::format("{} cannot be read: {}", file.string(), stream ? "it is no file" : std::strerror(errno)));
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return zn::fromCodePage(bytes.str());
}

} // namespace

void addCheckMacro(CLI::App& app)
{
    struct Options {
        std::filesystem::path file;
        bool json = false;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command
        = app.add_subcommand("check-macro", "Checks a macro without running it; exit code 1 if it has errors");
    command->add_option("FILE", options->file, "Macro text in the single-byte code page")->required();
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options] {
        const auto errors = zn::language::check(readMacro(options->file), macroCompileOptions());
        nlohmann::ordered_json list = nlohmann::ordered_json::array();
        for (const auto& error : errors) {
            list.push_back({{"line", error.line}, {"column", error.column}, {"message", zn::toUtf8(error.message)}});
            if (!options->json)
                fmt::print(
                    "{}:{}:{}: {}\n", options->file.string(), error.line, error.column, zn::toUtf8(error.message));
        }
        if (options->json)
            fmt::print("{}\n", list.dump(2));
        if (!errors.empty())
            throw CLI::RuntimeError(1);
    });
}

} // namespace zentrel::commands
