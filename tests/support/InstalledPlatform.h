#pragma once

#include "addin/installation/SettingsLight.h"
#include "platform/Registry.h"
#include "tests/support/TestPlatform.h"

namespace zn::test {

/// A machine of the test's own with the product installed in the folder of the built programs, in a language.
class InstalledPlatform : public TestPlatform {
public:
    explicit InstalledPlatform(const Text& language = u"GB")
    {
        write(u"Location", machine.files().fromMachine(ZN_BIN_DIR));
        write(u"DefaultLanguage", language);
    }

    /// Writes a value of the product's key.
    void write(const Text& name, const Text& value)
    {
        Registry& registry = machine.registry();
        registry.write(RegistryRoot::Machine, productKey, name, RegistryValue::text(value));
    }
};

} // namespace zn::test
