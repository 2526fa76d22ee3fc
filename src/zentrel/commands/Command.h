#pragma once

#include <CLI/CLI.hpp>
#include <filesystem>

/// The subcommands of `zentrel`, one file each. Each adds itself to the command line, with what it does when it was
/// chosen. Work that fails raises an exception with a sentence, or `CLI::RuntimeError` when all has been said.
namespace zentrel::commands {

/// Options that all subcommands share.
struct Common {
    std::filesystem::path home; ///< empty: the environment's
};

void addImport(CLI::App& app);
void addAssemble(CLI::App& app);
void addDraw(CLI::App& app);
void addInfo(CLI::App& app);
void addRunMacro(CLI::App& app, const Common& common);
void addCheckMacro(CLI::App& app);
void addRegister(CLI::App& app, const Common& common);

} // namespace zentrel::commands
