#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/RegistryKey.h"

#include <iostream>

namespace zn::arkin {

namespace {

class RegistryGet : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("KEY", m_key, "machine\\... or user\\...").required();
        take.option("NAME", m_name, "Name of the value; else the key's default value");
        take.flag("--32", m_bits32, "The machine's 32-bit face");
    }

    int run(Session& session) override
    {
        const auto at = parseKey(m_key, m_bits32);
        const auto value = session.platform().registry().read(at.root, at.key, zn::toText(m_name), at.view);
        if (!value)
            throw zn::StatusError(zn::E_INVALIDARG, "There is no value '" + m_name + "' in the key " + m_key + ".");
        if (session.json())
            printJson({{"value", jsonOf(*value)}, {"type", static_cast<std::uint32_t>(value->type)}});
        else
            std::cout << shownOf(*value) << "\n";
        return commandDone;
    }

private:
    std::string m_key;
    std::string m_name;
    bool m_bits32 = false;
};

} // namespace

MadeCommand registryGetCommand() { return std::make_unique<RegistryGet>(); }

} // namespace zn::arkin
