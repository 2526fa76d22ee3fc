// zentrel: makes and shows CAD documents, checks and runs macros, and registers the CAD application.

#include "zentrel/commands/Command.h"

#include <exception>
#include <iostream>

int main(int count, char** arguments)
{
    using namespace zentrel::commands;
    CLI::App app("Makes and shows ZENTREL documents, checks and runs macros. Exit code: 0 done, 1 the work failed, "
                 "2 wrong use.",
        "zentrel");
    app.require_subcommand(1);
    app.fallthrough();
    Common common;
    app.add_option(
           "--home", common.home, "Folder of registry and runtime files (default: ARKIN_HOME, or the desktop's)")
        ->type_name("DIR");
    addImport(app);
    addAssemble(app);
    addDraw(app);
    addInfo(app);
    addRunMacro(app, common);
    addCheckMacro(app);
    addRegister(app, common);
    try {
        app.parse(count, arguments);
        return 0;
    } catch (const CLI::RuntimeError& error) {
        return error.get_exit_code();
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    } catch (const std::exception& error) {
        std::cerr << "zentrel: " << error.what() << '\n';
        return 1;
    }
}
