#include "zentrel/application/MacroHost.h"

#include <fmt/format.h>

namespace zn::zentrel {

DispatchRef MacroHost::application() { return std::static_pointer_cast<Application>(m_application.shared_from_this()); }

Value MacroHost::global(MemberCall& call)
{
    if (!zn::equalNoCase(call.name, u"Application") && !zn::equalNoCase(call.name, u"Zentrel.Application"))
        throw StatusError(zn::DISP_E_MEMBERNOTFOUND, "There is no global '" + zn::toUtf8(call.name) + "'.");
    return application();
}

DispatchRef MacroHost::createObject(const Text& programId)
{
    const bool own = zn::equalNoCase(programId, u"Zentrel.Application")
        || zn::startsWithNoCase(programId, u"Zentrel.Application.");
    return own ? application() : nullptr;
}

Value MacroHost::callDeclared(zn::language::DeclaredCall& call)
{
    return callDeclaredFunction(m_application.surroundings().files, m_application.confinement(), call);
}

void MacroHost::debugPrint(const Text& line)
{
    const Surroundings& around = m_application.surroundings();
    if (around.print)
        around.print(zn::toUtf8(line));
    else if (around.log)
        around.log("Debug: " + zn::toUtf8(line));
}

std::int32_t MacroHost::messageBox(const zn::language::MessageBox& box)
{
    const std::int32_t answer = defaultAnswer(box.buttons);
    m_application.report(
        fmt::format("Message '{}': {} (answered with {})", zn::toUtf8(box.title), zn::toUtf8(box.prompt), answer));
    return answer;
}

Text MacroHost::inputBox(const zn::language::InputBox& box)
{
    m_application.report(fmt::format("Question '{}': {} (answered with '{}')", zn::toUtf8(box.title),
        zn::toUtf8(box.prompt), zn::toUtf8(box.defaultAnswer)));
    return box.defaultAnswer;
}

bool MacroHost::stopRequested()
{
    const auto& asked = m_application.surroundings().stopRequested;
    return asked && asked();
}

zn::language::LineWatcher* MacroHost::watcher() { return m_application.surroundings().trace ? this : nullptr; }

void MacroHost::line(const zn::language::WatchedLine& line)
{
    m_application.surroundings().trace(
        fmt::format("{:5}  {:{}}{}", line.number, "", 2 * line.depth, zn::toUtf8(zn::trim(line.source))));
}

void MacroHost::changed(const zn::language::WatchedChange& change)
{
    m_application.surroundings().trace(
        fmt::format("    >  {:{}}{} = {}", "", 2 * change.depth, zn::toUtf8(change.name), zn::toUtf8(change.value)));
}

std::int32_t defaultAnswer(std::int32_t buttons)
{
    // Rows: the kinds of boxes in the order of their numbers; columns: their buttons, with the language's answers.
    constexpr std::int32_t answers[][3] = {{1, 1, 1}, {1, 2, 2}, {3, 4, 5}, {6, 7, 2}, {6, 7, 7}, {4, 2, 2}};
    const std::int32_t kind = buttons & 15;
    const std::int32_t place = (buttons >> 8) & 3;
    return kind < 6 && place < 3 ? answers[kind][place] : 1;
}

} // namespace zn::zentrel
