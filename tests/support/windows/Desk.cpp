#include "support/windows/Desk.h"

#include "arkin/store/Cards.h"
#include "platform/Registry.h"

namespace zn::test {

namespace {

Platform installedPlatform(InstalledPlatform& installed, const std::filesystem::path& stringFolder)
{
    if (!stringFolder.empty())
        installed.write(u"LanFileDir", installed.machine.files().fromMachine(stringFolder));
    return installed.ports();
}

} // namespace

Desk::Desk(const Text& language, const std::filesystem::path& stringFolder)
    : installed(language)
    , platform(installedPlatform(installed, stringFolder))
    , vault(installed.folder.path())
    , vaultObject(std::make_shared<arkin::VaultObject>(vault.vault))
    , tasks(vault.store.database(), vault.vault.info().id)
    , pages(platform)
{
    arkin::Cards cards(vault.store.database(), vault.vault.info().id);
    for (const char16_t* name : {u"Author", u"Description", u"Number", u"Project"})
        cards.addVariable(name);
    pages.environment().lex().observe([this](const lexmgr::Lookup& lookup) {
        asked[{Text(lookup.file), Text(lookup.section), lookup.id}] = {Text(lookup.defaultText), lookup.found};
    });
    host.winId();
}

PageSetting Desk::setting(TaskKind kind, const arkin::Variables& variables)
{
    arkin::TaskDefinition definition;
    definition.name = u"Task " + numberText(++m_tasksMade);
    definition.createdBy = u"anna";
    definition.variables = variables;
    definition.variables[u"__type"] = static_cast<std::int32_t>(kind);
    tasks.create(definition);
    return {vaultObject, std::make_shared<arkin::TaskProperties>(tasks.get(definition.name)), kind,
        static_cast<std::int32_t>(host.winId())};
}

} // namespace zn::test
