#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/RegisterAddIn.h"
#include "contracts/classes/ClassLibrary.h"

#include <iostream>

namespace zn::arkin {

namespace {

void unregisterAddIn(Session& session, const std::filesystem::path& library)
{
    session.platform(); // the library writes to the registry of this home
    zn::ClassLibrary(library).unregisterServer();
}

/// Registering and unregistering differ in what is done with the library alone.
class AddInRegistration : public Command {
public:
    using Function = void (*)(Session&, const std::filesystem::path&);
    AddInRegistration(Function function, const char* done)
        : m_function(function)
        , m_done(done)
    {
    }

    void declare(Arguments& take) override
    {
        take.option("PATH", m_path, "The add-in's library; else the one that is installed with this program");
    }

    int run(Session& session) override
    {
        const auto path = m_path.empty() ? installedAddIn() : std::filesystem::absolute(m_path);
        m_function(session, path);
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

MadeCommand addInRegisterCommand() { return std::make_unique<AddInRegistration>(&registerAddIn, "registered"); }

MadeCommand addInUnregisterCommand() { return std::make_unique<AddInRegistration>(&unregisterAddIn, "unregistered"); }

} // namespace zn::arkin
