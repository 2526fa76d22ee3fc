#include "Factories.h"
#include "Output.h"

#include "classstore/ClassLibrary.h"

#include <iostream>

namespace arkin {

namespace {

/// Registering and unregistering differ in the library's function alone.
class AddInRegistration : public Command {
public:
    using Function = void (zn::ClassLibrary::*)() const;
    AddInRegistration(Function function, const char* done)
        : m_function(function)
        , m_done(done)
    {
    }

    void declare(CLI::App& app) override { app.add_option("PATH", m_path, "The add-in's library")->required(); }

    int run(Session& session) override
    {
        session.platform(); // the library writes to the registry of this home
        const auto path = std::filesystem::absolute(m_path);
        (zn::ClassLibrary(path).*m_function)();
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
