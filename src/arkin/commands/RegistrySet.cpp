#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/RegistryKey.h"

#include <charconv>

namespace zn::arkin {

namespace {

class RegistrySet : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("KEY", m_key, "machine\\... or user\\...").required();
        take.option("NAME", m_name, "Name of the value; '' for the key's default value").required();
        take.option("VALUE", m_value, "The value").required();
        take.flag("--number", m_number, "Store a 32-bit number, not a text");
        take.flag("--32", m_bits32, "The machine's 32-bit face");
    }

    int run(Session& session) override
    {
        const auto at = parseKey(m_key, m_bits32);
        if (!session.platform().registry().write(at.root, at.key, zn::toText(m_name), value(), at.view))
            throw zn::StatusError(zn::E_ACCESSDENIED, "The key " + m_key + " may not be written.");
        if (session.json())
            printJson({{"key", m_key}, {"name", m_name}, {"value", m_value}});
        return commandDone;
    }

private:
    zn::RegistryValue value() const
    {
        if (!m_number)
            return zn::RegistryValue::text(zn::toText(m_value));
        std::int32_t number = 0;
        const auto* const end = m_value.data() + m_value.size();
        const auto read = std::from_chars(m_value.data(), end, number);
        if (read.ec != std::errc() || read.ptr != end)
            throw zn::StatusError(zn::E_INVALIDARG, "'" + m_value + "' is no 32-bit number.");
        return zn::RegistryValue::number(number);
    }

    std::string m_key;
    std::string m_name;
    std::string m_value;
    bool m_number = false;
    bool m_bits32 = false;
};

} // namespace

MadeCommand registrySetCommand() { return std::make_unique<RegistrySet>(); }

} // namespace zn::arkin
