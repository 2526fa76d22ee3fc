#include "zentrel/commands/Command.h"

#include "zentrel/commands/DocumentJson.h"
#include "zentrel/formats/Read.h"
#include "zentrel/kernel/KernelChild.h"

#include <fmt/format.h>

namespace zn::zentrel::commands {

namespace {

using zn::toUtf8;

void printProperties(const Properties& properties, const char* indent)
{
    for (const auto& [name, value] : properties)
        fmt::print("{}{} = {}\n", indent, toUtf8(name), toUtf8(value));
}

void print(const DocumentInfo& info)
{
    const std::string form = info.version == 0 ? "foreign file" : "container version " + std::to_string(info.version);
    fmt::print("{}, {}, active: {}\n", kindName(info.kind), form, toUtf8(info.active));
    printProperties(info.properties, "  ");
    for (const ConfigurationInfo& one : info.configurations) {
        fmt::print("configuration {}: {} bodies, {} faces, {:.6g} x {:.6g} x {:.6g} mm, {:.6g} mm^3, {:.6g} mm^2\n",
            toUtf8(one.name), one.bodies, one.faces, one.size[0], one.size[1], one.size[2], one.volume, one.area);
        printProperties(one.properties, "    ");
        for (const PartCount& part : one.parts)
            fmt::print("    {} x {}\n", part.count, toUtf8(part.name));
    }
    for (const ComponentInfo& one : info.components)
        fmt::print("component {}: {}\n", toUtf8(one.name),
            one.isVirtual ? "virtual" : one.path.string() + (one.isMissing ? " (missing)" : ""));
    for (const SheetInfo& one : info.sheets) {
        fmt::print("sheet {}: {}{}, scale {:.6g}\n", toUtf8(one.name), paperName(one.paper),
            one.landscape ? " landscape" : "", one.scale);
        for (const auto& model : one.models)
            fmt::print("    shows {}\n", model.string());
    }
}

struct Info {
    std::filesystem::path file;
    bool json = false;

    void declare(Arguments& take)
    {
        take.option("FILE", file, "A .zenprt, .zenasm or .zendrw, or a STEP or IGES file").required();
        take.flag("--json", json, "Print JSON");
    }

    int run() const
    {
        runInChild({"reading", file, computingLimit(0)}, [this] {
            const DocumentInfo info = canRead(file) ? describe(readForeign(file), file) : describe(file);
            if (json)
                fmt::print("{}\n", documentJson(info).text());
            else
                print(info);
            std::fflush(stdout);
            return std::string();
        });
        return zn::commandline::done;
    }
};

} // namespace

Subcommand infoCommand() { return subcommand<Info>("info", "Shows what is in a document"); }

} // namespace zn::zentrel::commands
