#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/RegistryKey.h"

namespace arkin {

namespace {

class RegistryDelete : public Command {
public:
    void declare(CLI::App& app) override
    {
        app.add_option("KEY", m_key, "machine\\... or user\\...")->required();
        m_nameOption = app.add_option("NAME", m_name, "Name of the value; without it the whole key goes");
        app.add_flag("--32", m_bits32, "The machine's 32-bit face");
    }

    int run(Session& session) override
    {
        auto& registry = session.platform().registry();
        const auto at = parseKey(m_key, m_bits32);
        if (m_nameOption->count() > 0)
            registry.removeValue(at.root, at.key, zn::toText(m_name), at.view);
        else if (at.key.empty())
            throw zn::StatusError(zn::E_INVALIDARG, "A whole root isn't deleted: name a key below it.");
        else
            registry.removeKey(at.root, at.key, at.view);
        if (session.json())
            printJson({{"key", m_key}, {"name", m_nameOption->count() > 0 ? Json(m_name) : Json(nullptr)}});
        return commandDone;
    }

private:
    std::string m_key;
    std::string m_name;
    CLI::Option* m_nameOption = nullptr;
    bool m_bits32 = false;
};

} // namespace

MadeCommand registryDeleteCommand() { return std::make_unique<RegistryDelete>(); }

} // namespace arkin
