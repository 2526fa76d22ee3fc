#include "platform/linux/RegistryProducts.h"

#include "base/Paths.h"
#include "platform/Registry.h"

namespace zn {

std::vector<Text> RegistryProducts::list()
{
    std::vector<Text> names;
    for (const RegistryView view : {RegistryView::Bits64, RegistryView::Bits32}) {
        for (const Text& product : m_registry.subKeys(RegistryRoot::Machine, installedProductsKey, view)) {
            const auto value = m_registry.read(
                RegistryRoot::Machine, pathAppend(installedProductsKey, product), productNameValue, view);
            if (auto name = value ? value->asText() : std::nullopt; name && !name->empty())
                names.push_back(std::move(*name));
        }
    }
    return names;
}

} // namespace zn
