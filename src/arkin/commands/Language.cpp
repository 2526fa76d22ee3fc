#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/RegistryKey.h"

#include <algorithm>
#include <iostream>

namespace zn::arkin {

namespace {

using zn::RegistryRoot;

/// The language of the product's windows: a code such as "DE" in the product's settings, English without one.
class Language : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("CODE", m_code, "Language code, such as GB or DE; shows the present one without it");
    }

    int run(Session& session) override
    {
        zn::Registry& registry = session.platform().registry();
        const auto key = zn::Text(productKey) + u"\\Vaults\\_-Global\\Settings";
        if (!m_code.empty() && !registry.write(RegistryRoot::Machine, key, u"0", zn::RegistryValue::text(code())))
            throw zn::StatusError(zn::E_ACCESSDENIED, "The language may not be written to the registry.");
        auto value = registry.read(RegistryRoot::Machine, key, u"0");
        if (!value)
            value = registry.read(RegistryRoot::Machine, productKey, u"DefaultLanguage");
        const auto language = zn::toUtf8(value ? value->asText().value_or(u"GB") : u"GB");
        if (session.json())
            printJson({{"language", language}});
        else
            std::cout << language << "\n";
        return commandDone;
    }

private:
    zn::Text code() const
    {
        const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
        if (m_code.size() > 8 || !std::all_of(m_code.begin(), m_code.end(), isLetter))
            throw zn::StatusError(
                zn::E_INVALIDARG, "'" + m_code + "' is no language code: it has letters only, such as GB or DE.");
        return zn::toUpper(zn::toText(m_code));
    }

    std::string m_code;
};

} // namespace

MadeCommand languageCommand() { return std::make_unique<Language>(); }

} // namespace zn::arkin
