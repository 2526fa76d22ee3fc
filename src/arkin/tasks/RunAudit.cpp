#include "arkin/tasks/RunAudit.h"

#include "arkin/store/Codes.h"
#include "arkin/tasks/RunClaim.h"
#include "platform/PackedText.h"
#include "platform/Sha256.h"

#include <nlohmann/json.hpp>
#include <soci/soci.h>

namespace zn::arkin {

using soci::into;
using soci::use;
using zn::toText;
using zn::toUtf8;

namespace {

std::string hashOf(const std::string& text)
{
    zn::Sha256 hash;
    hash.update(text);
    return hash.finish();
}

/// The template has a text of its own, and the files are no setting: the same settings on other files are the same.
bool isSetting(const zn::Text& name) { return name != zn::scriptVariable && name != zn::selectionVariable; }

/// {"Name": [type, "text"]}, in the order of the names: the same settings give the same text.
std::string settingsText(const Variables& variables)
{
    auto settings = nlohmann::json::object();
    for (const auto& [name, value] : variables) {
        if (!isSetting(name))
            continue;
        const auto stored = toStoredVariable(value);
        settings[toUtf8(name)] = {stored.type, stored.text};
    }
    return settings.dump();
}

std::string templateText(const Variables& variables)
{
    const auto script = variables.find(zn::Text(zn::scriptVariable));
    return script == variables.end() ? std::string() : toUtf8(script->second.toText());
}

/// Texts that many runs share are kept once.
std::string keepText(Database& database, const std::string& text)
{
    auto hash = hashOf(text);
    int count = 0;
    database.session() << "SELECT COUNT(*) FROM task_texts WHERE hash = :hash", use(hash), into(count);
    if (count == 0) {
        const auto packed = zn::packText(text);
        database.session() << "INSERT INTO task_texts (hash, packed) VALUES (:hash, :packed)", use(hash), use(packed);
    }
    return hash;
}

std::string unpacked(const std::string& packed, const std::string& base, const std::string& hash)
{
    try {
        auto text = zn::unpackText(packed, base);
        if (hashOf(text) == hash)
            return text;
    } catch (const std::runtime_error&) {
        // Told below: what is wrong with it helps nobody.
    }
    throw zn::StatusError(
        E_ARK_DATABASE, "The text " + hash + " isn't as it was kept. 'arkin vault check' tells what else is damaged.");
}

std::string lostText(const std::string& what)
{
    return what + " is missing in the database. 'arkin vault check' tells what else is damaged.";
}

} // namespace

Variables launchSettings(const TaskDefinition& task, const NewRun& run)
{
    Variables variables = run.ownVariables;
    variables.insert(task.variables.begin(), task.variables.end());
    return variables;
}

std::string settingsHashOf(const Variables& variables) { return hashOf(settingsText(variables)); }

std::string templateHashOf(const Variables& variables)
{
    const auto text = templateText(variables);
    return text.empty() ? std::string() : hashOf(text);
}

void writeLaunch(
    Database& database, std::int32_t runId, const TaskDefinition& task, const NewRun& run, std::int64_t now)
{
    const auto variables = launchSettings(task, run);
    const auto script = templateText(variables);
    const auto templateHash = script.empty() ? std::string() : keepText(database, script);
    const auto settingsHash = keepText(database, settingsText(variables));
    auto names = nlohmann::json::array();
    for (const auto& own : run.ownVariables)
        if (isSetting(own.first))
            names.push_back(toUtf8(own.first));
    const auto asked = names.dump(), guid = toUtf8(run.guid), name = toUtf8(task.name), user = toUtf8(run.userName);
    const auto here = thisProcess();
    const auto machine = toUtf8(here.host);
    const long long at = now;
    database.session() << "INSERT INTO task_run_audits (run_id, guid, task_name, user_name, machine, process, "
                          "launched_at, template_hash, settings_hash, asked, again_of) VALUES (:id, :guid, :name, "
                          ":user, :machine, :process, :at, :template, :settings, :asked, :again)",
        use(runId), use(guid), use(name), use(user), use(machine), use(here.process), use(at), use(templateHash),
        use(settingsHash), use(asked), use(run.againOf);
}

void RunClaim::writeAddIn(const zn::ArkAddInInfo& addIn) const
{
    Transaction transaction(m_store->database());
    requireHeld();
    const auto name = toUtf8(addIn.name);
    m_store->database().session() << "UPDATE task_run_works SET add_in = :name, add_in_version = :version WHERE "
                                     "run_id = :id AND claim = :claim",
        use(name), use(addIn.addInVersion), use(m_run.id), use(m_run.claim);
    transaction.commit();
}

void RunClaim::writeApplication(const zn::ArkApplication& application) const
{
    const auto name = toUtf8(application.name), version = toUtf8(application.version),
               build = toUtf8(application.build);
    Transaction transaction(m_store->database());
    requireHeld();
    m_store->database().session() << "UPDATE task_run_works SET application_name = :name, application_version = "
                                     ":version, application_build = :build WHERE run_id = :id AND claim = :claim",
        use(name), use(version), use(build), use(m_run.id), use(m_run.claim);
    transaction.commit();
}

/// Of one claim's macros the first one is packed against the template, the others against the first one, from which
/// they differ in a few values.
void RunClaim::writeMacros(const std::vector<zn::ArkRunMacro>& macros) const
{
    Transaction transaction(m_store->database());
    requireHeld();
    auto& session = m_store->database().session();
    std::int32_t position = 0;
    session << "SELECT macros FROM task_run_works WHERE run_id = :id AND claim = :claim", use(m_run.id),
        use(m_run.claim), into(position);
    RunAudits audits(m_store->database());
    const auto audit = audits.get(m_run.id);
    std::string first;
    if (position > 0) {
        AuditedMacro earlier;
        earlier.claim = m_run.claim;
        session << "SELECT hash FROM task_run_macros WHERE run_id = :id AND claim = :claim AND position = 0",
            use(m_run.id), use(m_run.claim), into(earlier.hash);
        first = audits.macroText(audit, earlier);
    }
    for (const auto& macro : macros) {
        const auto text = toUtf8(macro.text), path = toUtf8(macro.path), configuration = toUtf8(macro.configuration);
        const auto hash = hashOf(text);
        const auto packed = zn::packText(text, position == 0 ? audits.macroTemplate(audit) : first);
        session << "INSERT INTO task_run_macros (run_id, claim, position, path, file_id, version, configuration, hash, "
                   "packed) VALUES (:id, :claim, :position, :path, :file, :version, :configuration, :hash, :packed)",
            use(m_run.id), use(m_run.claim), use(position), use(path), use(macro.fileId), use(macro.version),
            use(configuration), use(hash), use(packed);
        if (position == 0)
            first = text;
        ++position;
    }
    session << "UPDATE task_run_works SET macros = :macros WHERE run_id = :id AND claim = :claim", use(position),
        use(m_run.id), use(m_run.claim);
    transaction.commit();
}

namespace {

std::vector<RunWork> worksOf(soci::session& session, std::int32_t runId)
{
    std::vector<RunWork> works;
    RunWork work;
    std::string machine, addIn, name, version, build;
    long long begun = 0;
    soci::statement select = (session.prepare
            << "SELECT claim, machine, process, begun_at, add_in, add_in_version, application_name, "
               "application_version, application_build, macros FROM task_run_works WHERE run_id = :id ORDER BY claim",
        use(runId), into(work.claim), into(machine), into(work.process), into(begun), into(addIn),
        into(work.addInVersion), into(name), into(version), into(build), into(work.macros));
    select.execute();
    while (select.fetch()) {
        work.machine = toText(machine);
        work.begunAt = begun;
        work.addIn = toText(addIn);
        work.application = {toText(name), toText(version), toText(build)};
        works.push_back(work);
    }
    return works;
}

} // namespace

RunAudit RunAudits::get(std::int32_t runId)
{
    RunAudit audit;
    std::string guid, name, user, machine, asked;
    long long at = 0;
    auto& session = m_database.session();
    session << "SELECT guid, task_name, user_name, machine, process, launched_at, template_hash, settings_hash, asked, "
               "again_of FROM task_run_audits WHERE run_id = :id",
        use(runId), into(guid), into(name), into(user), into(machine), into(audit.process), into(at),
        into(audit.templateHash), into(audit.settingsHash), into(asked), into(audit.againOf);
    if (!session.got_data())
        throw zn::StatusError(E_ARK_DATABASE, lostText("What was kept of run " + std::to_string(runId)));
    audit.runId = runId;
    audit.guid = toText(guid);
    audit.taskName = toText(name);
    audit.userName = toText(user);
    audit.machine = toText(machine);
    audit.launchedAt = at;
    const auto names = nlohmann::json::parse(asked, nullptr, false);
    for (const auto& own : names)
        if (own.is_string())
            audit.asked.push_back(toText(own.get<std::string>()));
    audit.works = worksOf(session, runId);
    return audit;
}

std::string RunAudits::text(const std::string& hash)
{
    std::string packed;
    m_database.session() << "SELECT packed FROM task_texts WHERE hash = :hash", use(hash), into(packed);
    if (!m_database.session().got_data())
        throw zn::StatusError(E_ARK_DATABASE, lostText("The text " + hash));
    return unpacked(packed, {}, hash);
}

Variables RunAudits::settings(const RunAudit& audit)
{
    Variables variables;
    if (audit.isFromBefore())
        return variables;
    const auto kept = nlohmann::json::parse(text(audit.settingsHash));
    for (const auto& [name, stored] : kept.items())
        variables[toText(name)]
            = fromStoredVariable({stored.at(0).get<std::int32_t>(), stored.at(1).get<std::string>()});
    if (!audit.templateHash.empty())
        variables[zn::Text(zn::scriptVariable)] = zn::Value(toText(macroTemplate(audit)));
    return variables;
}

std::string RunAudits::macroTemplate(const RunAudit& audit)
{
    return audit.templateHash.empty() ? std::string() : text(audit.templateHash);
}

std::vector<AuditedMacro> RunAudits::macros(std::int32_t runId)
{
    std::vector<AuditedMacro> macros;
    AuditedMacro macro;
    std::string path, configuration;
    soci::statement select = (m_database.session().prepare
            << "SELECT claim, position, path, file_id, version, configuration, hash FROM task_run_macros "
               "WHERE run_id = :id ORDER BY claim, position",
        use(runId), into(macro.claim), into(macro.position), into(path), into(macro.fileId), into(macro.version),
        into(configuration), into(macro.hash));
    select.execute();
    while (select.fetch()) {
        macro.path = toText(path);
        macro.configuration = toText(configuration);
        macros.push_back(macro);
    }
    return macros;
}

std::string RunAudits::packedMacro(std::int32_t runId, std::int32_t claim, std::int32_t position)
{
    std::string packed;
    m_database.session()
        << "SELECT packed FROM task_run_macros WHERE run_id = :id AND claim = :claim AND position = :position",
        use(runId), use(claim), use(position), into(packed);
    if (!m_database.session().got_data())
        throw zn::StatusError(E_ARK_DATABASE, lostText("A macro of run " + std::to_string(runId)));
    return packed;
}

std::string RunAudits::macroText(const RunAudit& audit, const AuditedMacro& macro)
{
    const auto script = macroTemplate(audit);
    const auto packed = packedMacro(audit.runId, macro.claim, 0);
    if (macro.position == 0)
        return unpacked(packed, script, macro.hash);
    std::string first;
    const std::int32_t run = audit.runId, claim = macro.claim;
    m_database.session() << "SELECT hash FROM task_run_macros WHERE run_id = :id AND claim = :claim AND position = 0",
        use(run), use(claim), into(first);
    return unpacked(packedMacro(audit.runId, macro.claim, macro.position), unpacked(packed, script, first), macro.hash);
}

} // namespace zn::arkin
