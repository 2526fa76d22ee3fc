#include "tests/support/windows/Desk.h"

#include "addin/libraries/lexmgr/LexMgr.h"
#include "arkin/reftree/RefTreeRegistration.h"
#include "arkin/store/AddFiles.h"
#include "arkin/store/CheckIn.h"
#include "arkin/store/CheckOut.h"
#include "arkin/tasks/TaskProperties.h"
#include "platform/Registry.h"
#include "platform/Sqlite.h"

#include <fstream>

namespace zn::test {

namespace {

constexpr const char16_t* root = u"C:\\Vault";

/// The drive of the vault, the host's control and the string files.
Platform installedPlatform(InstalledPlatform& installed, const std::filesystem::path& stringFolder)
{
    std::filesystem::create_directories(installed.folder / "drive/Vault");
    Registry& registry = installed.machine.registry();
    registry.write(RegistryRoot::User, u"Software\\Arkin\\Drives", u"C",
        RegistryValue::text(toText((installed.folder / "drive").string())));
    zn::arkin::registerRefTree(
        registry, installed.machine.files().fromMachine(std::string(ZN_BIN_DIR) + "/libarkin-reftree.so"));
    if (!stringFolder.empty())
        installed.write(u"LanFileDir", installed.machine.files().fromMachine(stringFolder));
    return installed.ports();
}

} // namespace

Desk::Desk(const Text& language, const std::filesystem::path& stringFolder)
    : installed(language)
    , platform(installedPlatform(installed, stringFolder))
    , store(
          sqliteConnection(installed.folder / "vault.db"), installed.folder / "archive", platform.files, platform.clock)
    , vault(store, store.createVault(u"Demo", root), zn::arkin::Caller{"anna", "bench"})
    , vaultObject(std::make_shared<zn::arkin::VaultObject>(vault))
    , pages(platform)
{
    // Nobody sits at the screen of these windows: no box waits for an answer.
    pages.setAttended(false);
    for (const char16_t* name : {u"Author", u"Description", u"Number", u"Project"})
        vault.cards().addVariable(name);
    pages.environment().lex().observe([this](const lexmgr::Lookup& lookup) {
        asked[{Text(lookup.file), Text(lookup.section), lookup.id}] = {Text(lookup.defaultText), lookup.found};
    });
}

PageSetting Desk::setting(TaskKind kind, const zn::arkin::Variables& variables)
{
    zn::arkin::TaskDefinition definition;
    definition.name = u"Task " + numberText(++m_tasksMade);
    definition.createdBy = u"anna";
    definition.variables = variables;
    definition.variables[u"__type"] = static_cast<std::int32_t>(kind);
    return {vaultObject, std::make_shared<zn::arkin::TaskProperties>(definition), kind, window()};
}

Text Desk::path(const std::string& relative)
{
    Text name = toText(relative);
    replaceAll(name, u"/", u"\\");
    return Text(root) + u"\\" + name;
}

zn::arkin::Place Desk::addFile(const std::string& relative, const std::vector<zn::arkin::Place>& targets)
{
    const std::filesystem::path local = installed.folder.path() / "drive/Vault" / relative;
    std::filesystem::create_directories(local.parent_path());
    std::ofstream(local) << relative;
    const std::filesystem::path whole(relative);
    const zn::arkin::AddRequest request{
        path(relative), path(whole.parent_path().string()), toText(whole.filename().string())};
    const zn::arkin::Place place = zn::arkin::addFiles(vault, {&request, 1}).front().place;
    for (const zn::arkin::Place& target : targets) {
        const zn::arkin::NewReference reference{place.fileId, target};
        zn::arkin::addReferences(vault, {&reference, 1});
    }
    zn::arkin::checkIn(vault, zn::arkin::planCheckIn(vault, {&place, 1}), u"");
    return place;
}

} // namespace zn::test
