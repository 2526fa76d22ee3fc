#include "arkin/commands/frame/RegisterAddIn.h"

#include "arkin/commands/frame/RegistryKey.h"
#include "contracts/classes/ClassLibrary.h"

namespace zn::arkin {

namespace {

/// The host's own control, which add-ins make through the class store, is registered along with them. It isn't part of
/// an installation without windows.
void registerControls()
{
    const auto library = programFolder() / "libarkin-reftree.so";
    if (std::filesystem::exists(library))
        zn::ClassLibrary(library).registerServer();
}

/// Where this product is installed: its closed libraries and its texts lie beside the program.
void writeLocation(Session& session)
{
    auto& machine = session.platform();
    const auto location = machine.files().fromMachine(programFolder());
    zn::Registry& registry = machine.registry();
    if (!registry.write(zn::RegistryRoot::Machine, productKey, u"Location", zn::RegistryValue::text(location)))
        throw zn::StatusError(zn::E_ACCESSDENIED, "The product's location may not be written to the registry.");
}

} // namespace

std::filesystem::path installedAddIn() { return programFolder() / "libZNTaskAddIn.so"; }

void registerAddIn(Session& session, const std::filesystem::path& library)
{
    session.platform(); // the library writes to the registry of this home
    zn::ClassLibrary(library).registerServer();
    registerControls();
    writeLocation(session);
}

} // namespace zn::arkin
