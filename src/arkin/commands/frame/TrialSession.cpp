#include "arkin/commands/frame/TrialSession.h"

#include "platform/linux/FolderPrinters.h"

namespace zn::arkin {

TrialSession::TrialSession(Session& original, const std::filesystem::path& printed)
    : m_original(original)
    , m_folder(std::filesystem::temp_directory_path(), "arkin-trial")
    , m_home(original.store(), original.platform().home().registryFile(), m_folder.path())
{
    m_session.emplace(CommonOptions{m_home.home().string(), zn::toUtf8(original.vault().info().name), original.json()});
    m_home.lendContents(m_session->store());
    printInto(printed);
}

TrialSession::~TrialSession()
{
    // It may lie elsewhere, where the copy's own path is too long for sockets.
    const auto runtime = m_session->platform().home().runtimeFolder();
    m_session.reset();
    std::error_code ignored; // the system clears its temporary folder
    std::filesystem::remove_all(runtime, ignored);
    m_original.platform().home().passToChildren();
}

namespace {

[[noreturn]] void refuse(const std::string& sentence) { throw zn::StatusError(zn::E_FAIL, sentence); }

} // namespace

/// A printer of the system gives way to one of this machine's own that has its name.
void TrialSession::printInto(const std::filesystem::path& folder)
{
    auto& machine = m_session->platform();
    const auto printers = machine.printers().list();
    if (machine.printers().isSilent())
        refuse("The machine's printing system doesn't answer, so nothing could keep a trial from printing. Try again "
               "when it answers.");
    for (const zn::Printer& printer : printers) {
        const auto name = zn::toUtf8(printer.name);
        if (name.find_first_of("/\\") != std::string::npos)
            refuse("Nothing could keep a trial from printing on the printer '" + name
                + "', whose name has a separator in it. Give it another name.");
        const auto target = folder / name;
        std::filesystem::create_directories(target);
        machine.registry().write(zn::RegistryRoot::Machine, zn::Text(zn::folderPrintersKey) + u"\\" + printer.name,
            zn::printerFolderValue, zn::RegistryValue::text(machine.files().fromMachine(target)),
            zn::RegistryView::Bits64);
    }
}

} // namespace zn::arkin
