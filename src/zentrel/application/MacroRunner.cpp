#include "zentrel/application/MacroRunner.h"

#include "contracts/objectmodel/TypeLibrary.h"
#include "language/Program.h"
#include "zentrel/application/Application.h"
#include "zentrel/application/ConfinedFiles.h"
#include "zentrel/application/MacroHost.h"

#include <algorithm>
#include <fmt/format.h>

namespace zn::zentrel {

namespace {

using zn::language::Reason;

constexpr char16_t moduleName[] = u"ZNMacro1";

MacroOutcome runModule(Application& application, const Text& file, const Text& module, const Text& procedure)
{
    zn::FileSystem& files = application.surroundings().files;
    const std::string name = zn::toUtf8(file);
    const auto fail = [&](Reason reason, const std::string& sentence) {
        application.report(sentence);
        return MacroOutcome{false, reason};
    };
    const auto bytes = files.readBytes(file);
    if (!bytes)
        return fail(
            Reason::OpenFailed, fmt::format("The macro '{}' cannot be read: {}.", name, zn::toUtf8(bytes.reason)));
    if (!zn::equalNoCase(module, moduleName))
        return fail(Reason::InvalidProcedureName,
            fmt::format("The macro '{}' has no module '{}'; its one module is 'ZNMacro1'.", name, zn::toUtf8(module)));
    try {
        const auto program = zn::language::compile(zn::fromCodePage(*bytes), macroCompileOptions());
        MacroHost host(application);
        ConfinedFiles access(files, application.confinement(), application.surroundings().workFolder);
        zn::language::Machine machine(program, host, access);
        machine.run(procedure);
        return {true, Reason::None};
    } catch (const zn::language::SyntaxError& error) {
        return fail(zn::language::reasonOf(error),
            faultText(name, error.line(), error.column(), error.message(), error.sourceLine()));
    } catch (const zn::language::RuntimeFault& fault) {
        return fail(zn::language::reasonOf(fault),
            faultText(name, fault.line, fault.column, fault.description, fault.sourceLine));
    }
}

} // namespace

MacroOutcome runMacro(Application& application, const Text& file, const Text& module, const Text& procedure)
{
    application.reachable(file); // a macro may be running already that wants this one run
    application.forgetReports(); // so that what is asked for afterwards is about this macro
    MacroOutcome outcome;
    application.runMacroWork([&] { outcome = runModule(application, file, module, procedure); });
    return outcome;
}

std::string faultText(const std::string& file, int line, int column, const Text& message, const Text& sourceLine)
{
    std::string text = line > 0 ? fmt::format("{}:{}:{}: {}", file, line, column, zn::toUtf8(message))
                                : fmt::format("{}: {}", file, zn::toUtf8(message));
    if (sourceLine.empty())
        return text;
    // Of a line that nobody could have typed only what stands around the fault.
    constexpr std::size_t shownBefore = 100, longestShown = 200;
    const std::size_t place = static_cast<std::size_t>(std::max(column, 1)) - 1;
    const std::size_t begin = place > shownBefore ? std::min(place, sourceLine.size()) - shownBefore : 0;
    const Text shown = sourceLine.substr(begin, longestShown);
    text += "\n    " + zn::toUtf8(shown) + "\n    ";
    for (std::size_t i = 0; i < std::min(place - begin, shown.size()); ++i)
        text += shown[i] == u'\t' ? '\t' : ' ';
    return text + "^";
}

} // namespace zn::zentrel
