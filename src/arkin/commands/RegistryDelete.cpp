#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/RegistryKey.h"

namespace zn::arkin {

namespace {

class RegistryDelete : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("KEY", m_key, "machine\\... or user\\...").required();
        take.option("NAME", m_name, "Name of the value; without it the whole key goes");
        take.flag("--32", m_bits32, "The machine's 32-bit face");
    }

    int run(Session& session) override
    {
        auto& registry = session.platform().registry();
        const auto at = parseKey(m_key, m_bits32);
        if (m_name)
            registry.removeValue(at.root, at.key, zn::toText(*m_name), at.view);
        else if (at.key.empty())
            throw zn::StatusError(zn::E_INVALIDARG, "A whole root isn't deleted: name a key below it.");
        else
            registry.removeKey(at.root, at.key, at.view);
        if (session.json())
            printJson({{"key", m_key}, {"name", m_name ? Json(*m_name) : Json(nullptr)}});
        return commandDone;
    }

private:
    std::string m_key;
    std::optional<std::string> m_name;
    bool m_bits32 = false;
};

} // namespace

MadeCommand registryDeleteCommand() { return std::make_unique<RegistryDelete>(); }

} // namespace zn::arkin
