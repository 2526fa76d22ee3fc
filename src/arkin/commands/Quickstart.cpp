#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/MakeTask.h"
#include "arkin/commands/frame/RegisterAddIn.h"
#include "arkin/commands/frame/ShellWord.h"
#include "arkin/store/Codes.h"
#include "base/Paths.h"

#include <algorithm>
#include <iostream>

namespace zn::arkin {

namespace {

using zn::StatusError;
using zn::Text;
using zn::toUtf8;

/// The tasks of a new vault, from the folder "tasks" beside this program. All can be launched without a question.
struct TaskRow {
    const char16_t* name;
    zn::TaskKind kind;
    const char* file;
};

constexpr TaskRow tasks[] = {
    {u"To STL", zn::TaskKind::Conversion, "to-stl.json"},
    {u"Drawings to PDF", zn::TaskKind::Conversion, "drawings-to-pdf.json"},
    {u"Print", zn::TaskKind::Printing, "print.json"},
};

/// The card variables that the tasks read and write.
constexpr const char16_t* cardVariables[] = {u"Description", u"Configuration", u"Source version"};

constexpr const char* printFolder = "Prints";
constexpr std::chrono::milliseconds look{20};
constexpr int mostLooks = 1500;

/// Lets the CAD application that lies beside this program register itself in the session's home.
void registerApplication(Session& session)
{
    auto& machine = session.platform();
    const auto program = programFolder() / "zentrel";
    if (!std::filesystem::exists(program))
        throw StatusError(zn::E_FAIL, "The CAD application isn't installed: " + program.string() + " isn't there.");
    const auto process = machine.processes().launch(u"\"" + machine.files().fromMachine(program) + u"\" register", 0);
    auto code = process ? machine.processes().exitCode(*process) : std::nullopt;
    for (int looks = 0; code == zn::stillActive && looks < mostLooks; ++looks) {
        machine.clock().sleep(look);
        code = machine.processes().exitCode(*process);
    }
    if (code != 0u)
        throw StatusError(zn::E_FAIL,
            "The CAD application wasn't registered; '" + shellWord(program.string()) + " register' says why.");
}

class Quickstart : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("DIR", m_folder, "Folder for the vault's files; made if it is missing").required();
        take.option("--name", m_name, "Name of the vault; else the folder's");
    }

    int run(Session& session) override
    {
        m_root = zn::withoutTrailingSeparators(session.pathOf(m_folder));
        if (m_name.empty())
            m_name = toUtf8(zn::pathFileName(m_root));
        const auto known = unfinishedVault(session);
        if (!known)
            requireEmptyFolder(session);
        choosePrinter(session);
        registerApplication(session);
        registerAddIn(session, installedAddIn());
        session.choose(known ? *known : session.store().createVault(zn::toText(m_name), m_root));
        for (const auto* const name : cardVariables)
            session.vault().cards().addVariable(name);
        makePrinter(session);
        for (const auto& row : tasks)
            if (!session.tasks().find(row.name))
                make(session, row);
        tell(session);
        return commandDone;
    }

private:
    /// What an earlier call that failed has left: the vault of this name and folder, without files and without all of
    /// its tasks. Any other one of the name is refused.
    std::optional<VaultInfo> unfinishedVault(Session& session)
    {
        auto known = session.store().findVault(zn::toText(m_name));
        if (!known)
            return std::nullopt;
        session.choose(*known);
        auto& vault = session.vault();
        const auto root = vault.folders().rootId();
        const bool empty = vault.folders().children(root).empty() && vault.files().inFolder(root).empty();
        const bool finished = std::all_of(std::begin(tasks), std::end(tasks),
            [&](const TaskRow& row) { return session.tasks().find(row.name).has_value(); });
        if (!zn::equalNoCase(known->root, m_root) || !empty || finished)
            throw StatusError(E_ARK_NAME_ALREADY_EXISTS,
                "The vault '" + toUtf8(known->name) + "' is there already, in " + session.shown(known->root)
                    + "; choose another name with --name.");
        return known;
    }

    void requireEmptyFolder(Session& session) const
    {
        const std::filesystem::path folder = session.shown(m_root);
        const auto status = std::filesystem::status(folder);
        if (std::filesystem::exists(status) && !std::filesystem::is_directory(status))
            throw StatusError(zn::E_INVALIDARG, folder.string() + " is no folder.");
        if (std::filesystem::exists(status) && !std::filesystem::is_empty(folder))
            throw StatusError(
                zn::E_INVALIDARG, folder.string() + " isn't empty; 'arkin vault create' makes a vault around files.");
    }

    /// The vault's own printer prints into a folder of the vault. Another one of its name isn't turned there.
    void choosePrinter(Session& session)
    {
        const auto folder = std::filesystem::path(session.shown(m_root)) / printFolder;
        m_printer = zn::toText(m_name) + u" prints";
        m_prints = session.platform().files().fromMachine(folder);
        zn::Registry& registry = session.platform().registry();
        const auto present = registry.read(
            zn::RegistryRoot::Machine, Text(zn::folderPrintersKey) + u"\\" + m_printer, zn::printerFolderValue);
        if (present && present->asText() != m_prints)
            throw StatusError(zn::E_INVALIDARG,
                "There is a printer '" + toUtf8(m_printer) + "' already; choose another name with --name.");
    }

    void makePrinter(Session& session) const
    {
        zn::Registry& registry = session.platform().registry();
        std::filesystem::create_directories(session.shown(m_prints));
        if (!registry.write(zn::RegistryRoot::Machine, Text(zn::folderPrintersKey) + u"\\" + m_printer,
                zn::printerFolderValue, zn::RegistryValue::text(m_prints)))
            throw StatusError(zn::E_ACCESSDENIED, "The printer may not be written to the registry.");
    }

    void make(Session& session, const TaskRow& row) const
    {
        const auto file = programFolder() / "tasks" / row.file;
        const VariableRules rules(session.taskHost(), defaultAddIn);
        TaskRequest request;
        request.name = row.name;
        request.kind = row.kind;
        request.file = readTaskFile(file, rules.known());
        if (row.kind == zn::TaskKind::Printing)
            request.settings[u"__printer_prname"] = zn::Value(m_printer);
        request.script = macroOf(request.file, file, row.kind);
        makeTask(session, rules, request);
    }

    void tell(Session& session) const
    {
        const auto root = session.shown(m_root);
        auto names = Json::array();
        for (const auto& row : tasks)
            names.push_back(toUtf8(row.name));
        if (session.json())
            return printJson(
                {{"name", m_name}, {"root", root}, {"printer", toUtf8(m_printer)}, {"tasks", std::move(names)}});
        const auto arkin = "  arkin" + session.repeatedOptions();
        std::cout << "Vault '" << m_name << "' is in " << root << ".\n"
                  << "Its tasks: 'To STL', 'Drawings to PDF', and 'Print', which prints into "
                  << session.shown(m_prints) << ".\nNow:\n"
                  << arkin << " add FILE --to Parts\n"
                  << arkin << " task launch 'To STL' " << shellWord(root + "/Parts") << "\n"
                  << arkin << " worker --once\n";
    }

    std::string m_folder;
    std::string m_name;
    Text m_root;
    Text m_printer;
    Text m_prints;
};

} // namespace

MadeCommand quickstartCommand() { return std::make_unique<Quickstart>(); }

} // namespace zn::arkin
