#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "base/Paths.h"

#include <fmt/format.h>

namespace zn::arkin {

namespace {

const char* shownKind(zn::PrinterKind kind) { return kind == zn::PrinterKind::Connected ? "connected" : "local"; }

/// The machine's path, where jobs go into a folder.
std::string shownTarget(Session& session, const zn::Printer& printer)
{
    return zn::startsWithDrive(printer.target) ? session.shown(printer.target) : zn::toUtf8(printer.target);
}

class PrinterList : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        auto list = Json::array();
        std::vector<std::vector<std::string>> rows{{"NAME", "KIND", "TARGET"}};
        for (const auto& printer : session.platform().printers().list()) {
            const auto name = zn::toUtf8(printer.name);
            const auto target = shownTarget(session, printer);
            list.push_back({{"name", name}, {"kind", shownKind(printer.kind)}, {"target", target}});
            rows.push_back({name, shownKind(printer.kind), target});
        }
        if (session.json())
            printJson(list);
        else
            printTable(rows,
                fmt::format("There are no printers. To make one that prints into a folder: arkin registry set "
                            "'machine\\{}\\NAME' {} DIR",
                    zn::toUtf8(zn::folderPrintersKey), zn::toUtf8(zn::printerFolderValue)));
        return commandDone;
    }
};

} // namespace

MadeCommand printerListCommand() { return std::make_unique<PrinterList>(); }

} // namespace zn::arkin
