#pragma once

#include "platform/Registry.h"

#include <filesystem>
#include <memory>

namespace zn {

/// The registry in one SQLite file that several processes share. The file and its tables are made when missing.
/// A lock that another process holds is waited for, a minute at most. Safe for use from several threads.
///
/// Raises `StatusError` with a sentence that names the file if it can't be opened or isn't a registry.
class SqliteRegistry : public Registry {
public:
    explicit SqliteRegistry(const std::filesystem::path& file);
    ~SqliteRegistry() override;

    bool keyExists(RegistryRoot root, TextView key, RegistryView view) override;
    void createKey(RegistryRoot root, TextView key, RegistryView view) override;
    std::vector<Text> subKeys(RegistryRoot root, TextView key, RegistryView view) override;
    std::vector<Text> valueNames(RegistryRoot root, TextView key, RegistryView view) override;
    std::optional<RegistryValue> read(RegistryRoot root, TextView key, TextView name, RegistryView view) override;
    bool write(RegistryRoot root, TextView key, TextView name, const RegistryValue& value, RegistryView view) override;
    void removeValue(RegistryRoot root, TextView key, TextView name, RegistryView view) override;
    void removeKey(RegistryRoot root, TextView key, RegistryView view) override;

private:
    class Store;
    std::unique_ptr<Store> m_store;
};

} // namespace zn
