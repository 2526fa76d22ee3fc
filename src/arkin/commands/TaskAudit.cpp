#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/TaskText.h"
#include "arkin/tasks/RunAudit.h"

#include <iostream>
#include <optional>
#include <set>

namespace zn::arkin {

namespace {

class TaskAudit : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("ID", m_id, "The run's number or identifier").required();
        take.option("--macro", m_macro, "Print the macro of this file, as it was carried out");
        take.option("--configuration", m_configuration, "Of several macros of the file the one for this configuration");
        take.flag("--template", m_template, "Print the macro template");
    }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        RunAudits audits(session.store().database());
        const auto run = runs.get(zn::toText(m_id));
        const auto audit = audits.get(run.id);
        if (!m_macro.empty())
            printMacro(session, audits, audit);
        else if (m_template)
            printTemplate(session, audits, audit);
        else if (session.json())
            printJson(toJson(session, audits, audit));
        else
            print(session, audits, audit, run);
        return commandDone;
    }

private:
    /// The last one that was carried out on the file.
    void printMacro(Session& session, RunAudits& audits, const RunAudit& audit) const
    {
        const auto path = session.vaultPathOf(m_macro);
        std::optional<AuditedMacro> found;
        for (const AuditedMacro& macro : audits.macros(audit.runId)) {
            if (!zn::equalNoCase(macro.path, path)
                || (m_configuration && !zn::equalNoCase(macro.configuration, zn::toText(*m_configuration))))
                continue;
            if (found && found->claim == macro.claim && found->configuration != macro.configuration)
                throw zn::StatusError(zn::E_INVALIDARG,
                    "Run " + std::to_string(audit.runId) + " carried out several macros on " + session.shown(path)
                        + "; say by --configuration which one, such as '" + zn::toUtf8(macro.configuration) + "'.");
            found = macro;
        }
        if (!found)
            throw zn::StatusError(zn::E_INVALIDARG,
                "Run " + std::to_string(audit.runId) + " has carried out no macro on " + session.shown(path)
                    + "; 'arkin task audit " + std::to_string(audit.runId) + "' lists those that it has.");
        const auto text = audits.macroText(audit, *found);
        if (session.json()) {
            auto json = toJson(session, *found);
            json["text"] = text;
            printJson(json);
        } else {
            std::cout << text; // as it was, without a line end of our own
        }
    }

    static void printTemplate(Session& session, RunAudits& audits, const RunAudit& audit)
    {
        const auto text = audits.macroTemplate(audit);
        if (session.json())
            printJson({{"hash", audit.templateHash}, {"text", text}});
        else
            std::cout << text;
    }

    static Json toJson(Session& session, const AuditedMacro& macro)
    {
        return {{"worker", macro.claim}, {"path", session.shown(macro.path)}, {"version", macro.version},
            {"configuration", zn::toUtf8(macro.configuration)}, {"hash", macro.hash}};
    }

    static Json toJson(Session& session, RunAudits& audits, const RunAudit& audit)
    {
        auto settings = Json::object(), asked = Json::array(), workers = Json::array(), macros = Json::array();
        for (const auto& [name, value] : audits.settings(audit))
            if (name != zn::scriptVariable)
                settings[zn::toUtf8(name)] = jsonValue(value);
        for (const zn::Text& name : audit.asked)
            asked.push_back(zn::toUtf8(name));
        for (const RunWork& work : audit.works)
            workers.push_back({{"number", work.claim}, {"machine", zn::toUtf8(work.machine)}, {"process", work.process},
                {"since", jsonTime(work.begunAt)},
                {"addIn", {{"name", zn::toUtf8(work.addIn)}, {"version", work.addInVersion}}},
                {"application",
                    {{"name", zn::toUtf8(work.application.name)}, {"version", zn::toUtf8(work.application.version)},
                        {"build", zn::toUtf8(work.application.build)}}}});
        for (const AuditedMacro& macro : audits.macros(audit.runId))
            macros.push_back(toJson(session, macro));
        return {{"run", audit.runId}, {"identifier", zn::toUtf8(audit.guid)}, {"task", zn::toUtf8(audit.taskName)},
            {"user", zn::toUtf8(audit.userName)}, {"machine", zn::toUtf8(audit.machine)}, {"process", audit.process},
            {"launched", jsonTime(audit.launchedAt)},
            {"againOf", audit.againOf == 0 ? Json(nullptr) : Json(audit.againOf)}, {"complete", !audit.isFromBefore()},
            {"template", {{"hash", audit.templateHash}, {"text", audits.macroTemplate(audit)}}},
            {"settings", {{"hash", audit.settingsHash}, {"asked", asked}, {"values", settings}}}, {"workers", workers},
            {"macros", macros}};
    }

    static void print(Session& session, RunAudits& audits, const RunAudit& audit, const RunInfo& run)
    {
        std::cout << "Run " << audit.runId << " of '" << zn::toUtf8(audit.taskName)
                  << "': " << zn::toUtf8(stateText(run, session.platform().clock().now())) << ".\n"
                  << "Launched " << shownTime(audit.launchedAt) << " by " << zn::toUtf8(audit.userName);
        if (audit.isFromBefore()) {
            std::cout << ". It is from before settings and macros were kept.\n";
        } else {
            std::cout << " on " << zn::toUtf8(audit.machine) << ", process " << audit.process
                      << (audit.againOf == 0 ? "" : ", to do run " + std::to_string(audit.againOf) + " again") << ".\n";
            printSettings(audits, audit);
        }
        for (const RunWork& work : audit.works)
            print(work);
        std::vector<std::vector<std::string>> rows{{"WORKER", "VERSION", "MACRO", "FILE"}};
        for (const AuditedMacro& macro : audits.macros(audit.runId)) {
            const auto configuration = zn::toUtf8(macro.configuration);
            rows.push_back({std::to_string(macro.claim), std::to_string(macro.version), macro.hash.substr(0, 12),
                session.shown(macro.path) + (configuration.empty() ? "" : " (" + configuration + ")")});
        }
        printTable(rows, "No macro was carried out.");
    }

    static void print(const RunWork& work)
    {
        std::cout << "Worker " << work.claim << " on " << zn::toUtf8(work.machine) << ", process " << work.process
                  << ", since " << shownTime(work.begunAt) << "\n";
        if (!work.addIn.empty())
            std::cout << "  add-in       " << zn::toUtf8(work.addIn) << " " << work.addInVersion << "\n";
        if (!work.application.name.empty())
            std::cout << "  application  " << zn::toUtf8(work.application.name) << " "
                      << zn::toUtf8(work.application.version) << " (" << zn::toUtf8(work.application.build) << ")\n";
    }

    /// The values that the launch wrote itself have a star.
    static void printSettings(RunAudits& audits, const RunAudit& audit)
    {
        const std::set<zn::Text> asked(audit.asked.begin(), audit.asked.end());
        std::cout << "Template  " << (audit.templateHash.empty() ? "-" : audit.templateHash) << "\nSettings  "
                  << audit.settingsHash << "\n";
        for (const auto& [name, value] : audits.settings(audit)) {
            if (name == zn::scriptVariable)
                continue;
            std::cout << (asked.contains(name) ? "* " : "  ") << zn::toUtf8(name) << "  " << shownValue(value) << "\n";
        }
    }

    std::string m_id;
    std::string m_macro;
    std::optional<std::string> m_configuration;
    bool m_template = false;
};

} // namespace

MadeCommand taskAuditCommand() { return std::make_unique<TaskAudit>(); }

} // namespace zn::arkin
