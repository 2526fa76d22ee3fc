#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/RegistryKey.h"
#include "contracts/classes/ClassLibrary.h"

#include <iostream>

namespace arkin {

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

/// Registering and unregistering differ in the library's function alone.
class AddInRegistration : public Command {
public:
    using Function = void (zn::ClassLibrary::*)() const;
    AddInRegistration(Function function, const char* done)
        : m_function(function)
        , m_done(done)
    {
    }

    void declare(Arguments& take) override { take.option("PATH", m_path, "The add-in's library").required(); }

    int run(Session& session) override
    {
        session.platform(); // the library writes to the registry of this home
        const auto path = std::filesystem::absolute(m_path);
        (zn::ClassLibrary(path).*m_function)();
        if (m_function == &zn::ClassLibrary::registerServer) {
            registerControls();
            writeLocation(session);
        }
        if (session.json())
            printJson({{"library", path.string()}, {"done", m_done}});
        else
            std::cout << path.string() << " is " << m_done << ".\n";
        return commandDone;
    }

private:
    Function m_function;
    const char* m_done;
    std::string m_path;
};

} // namespace

MadeCommand addInRegisterCommand()
{
    return std::make_unique<AddInRegistration>(&zn::ClassLibrary::registerServer, "registered");
}

MadeCommand addInUnregisterCommand()
{
    return std::make_unique<AddInRegistration>(&zn::ClassLibrary::unregisterServer, "unregistered");
}

} // namespace arkin
