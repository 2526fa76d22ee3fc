#include "arkin/commands/frame/LogText.h"

#include "arkin/commands/frame/TaskText.h"
#include "arkin/tasks/RunLog.h"

#include <iostream>

namespace zn::arkin {

namespace {

/// The run's messages that don't stand in its log. A sentence that the log has about another file counts for that one
/// alone.
std::vector<RunMessage> unlogged(std::vector<RunMessage> messages, const std::string& log)
{
    const auto plain = withTerminalLineEnds(log);
    const auto stands
        = [&](const zn::Text& text) { return plain.find(withTerminalLineEnds(zn::toUtf8(text))) != std::string::npos; };
    std::erase_if(
        messages, [&](const RunMessage& message) { return stands(message.path) && stands(message.sentence); });
    return messages;
}

} // namespace

std::string withTerminalLineEnds(std::string text)
{
    std::erase(text, '\r');
    return text;
}

std::optional<std::string> logText(Session& session, const RunInfo& run)
{
    const auto path = logPath(session, run);
    return path.empty() ? std::nullopt : readRunLog(session.vault(), session.platform().files(), path);
}

bool printLog(Session& session, const RunInfo& run)
{
    const auto text = logText(session, run);
    const auto messages = RunStore(session.store().database(), session.vault().info().id).messages(run.id);
    if (text)
        std::cout << withTerminalLineEnds(*text) << (text->empty() || text->ends_with('\n') ? "" : "\n");
    for (const auto& message : unlogged(messages, text.value_or("")))
        std::cout << messageLine(session, message) << "\n";
    return text || !messages.empty();
}

} // namespace zn::arkin
