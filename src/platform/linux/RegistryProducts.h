#pragma once

#include "platform/InstalledProducts.h"

namespace zn {

class Registry;

/// The machine's list of products in the registry: below `installedProductsKey` a key for each product, named by its
/// identifier, whose value "ProductName" is its name. Products of the 64-bit view come first, each view in the order
/// of the keys; a product without a name isn't listed.
class RegistryProducts : public InstalledProducts {
public:
    /// `registry` outlives this object.
    explicit RegistryProducts(Registry& registry)
        : m_registry(registry)
    {
    }

    std::vector<Text> list() override;

private:
    Registry& m_registry;
};

inline constexpr const char16_t* installedProductsKey = u"SOFTWARE\\Uninstall";
inline constexpr const char16_t* productNameValue = u"ProductName";

} // namespace zn
