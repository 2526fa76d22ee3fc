#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/RegistryKey.h"

namespace zn::arkin {

namespace {

class RegistryList : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("KEY", m_key, "machine\\... or user\\...").required();
        take.flag("--32", m_bits32, "The machine's 32-bit face");
    }

    int run(Session& session) override
    {
        auto& registry = session.platform().registry();
        const auto at = parseKey(m_key, m_bits32);
        auto keys = Json::array();
        auto values = Json::object();
        std::vector<std::vector<std::string>> rows{{"NAME", "VALUE"}};
        for (const auto& name : registry.subKeys(at.root, at.key, at.view)) {
            keys.push_back(zn::toUtf8(name));
            rows.push_back({zn::toUtf8(name) + "\\", ""});
        }
        for (const auto& name : registry.valueNames(at.root, at.key, at.view)) {
            const auto value = registry.read(at.root, at.key, name, at.view);
            if (!value)
                continue; // deleted by another process in this moment
            values[zn::toUtf8(name)] = jsonOf(*value);
            rows.push_back({name.empty() ? "(default)" : zn::toUtf8(name), shownOf(*value)});
        }
        if (session.json())
            printJson({{"keys", keys}, {"values", values}});
        else
            printTable(rows, "The key is empty.");
        return commandDone;
    }

private:
    std::string m_key;
    bool m_bits32 = false;
};

} // namespace

MadeCommand registryListCommand() { return std::make_unique<RegistryList>(); }

} // namespace zn::arkin
