#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/TaskText.h"
#include "arkin/tasks/RunLog.h"

#include <iostream>

namespace zn::arkin {

namespace {

std::string withTerminalLineEnds(std::string text)
{
    std::erase(text, '\r');
    return text;
}

class TaskLog : public Command {
public:
    void declare(Arguments& take) override { take.option("ID", m_id, "The run's number or identifier").required(); }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        const auto run = runs.get(zn::toText(m_id));
        const auto path = logPath(session, run);
        const auto text = path.empty() ? std::optional<std::string>()
                                       : readRunLog(session.vault(), session.platform().files(), path);
        const auto messages = runs.messages(run.id);
        if (session.json()) {
            auto list = Json::array();
            for (const auto& message : messages)
                list.push_back({{"path", session.shown(message.path)}, {"text", zn::toUtf8(message.sentence)}});
            printJson({{"run", run.id}, {"path", path.empty() ? Json(nullptr) : Json(session.shown(path))},
                {"text", text ? Json(*text) : Json(nullptr)}, {"messages", list}});
            return commandDone;
        }
        if (text)
            std::cout << withTerminalLineEnds(*text) << (text->empty() || text->ends_with('\n') ? "" : "\n");
        for (const auto& message : unlogged(messages, text.value_or("")))
            std::cout << messageLine(session, message) << "\n";
        if (!text && messages.empty())
            std::cerr << (path.empty() ? "The task keeps no log: it has no ErrorLogPath.\n"
                                       : "The run has logged nothing.\n");
        return commandDone;
    }

private:
    /// The run's messages that don't stand in its log. A sentence that the log has about another file counts for that
    /// one alone.
    static std::vector<RunMessage> unlogged(std::vector<RunMessage> messages, const std::string& log)
    {
        const auto plain = withTerminalLineEnds(log);
        const auto stands = [&](const zn::Text& text) {
            return plain.find(withTerminalLineEnds(zn::toUtf8(text))) != std::string::npos;
        };
        std::erase_if(
            messages, [&](const RunMessage& message) { return stands(message.path) && stands(message.sentence); });
        return messages;
    }

    std::string m_id;
};

} // namespace

MadeCommand taskLogCommand() { return std::make_unique<TaskLog>(); }

} // namespace zn::arkin
