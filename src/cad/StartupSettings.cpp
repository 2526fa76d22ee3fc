#include "cad/StartupSettings.h"

#include "platform/Processes.h"
#include "platform/Registry.h"

namespace zn {

namespace {

constexpr const char16_t* startupKeys[]
    = {u"Software\\Zentrel\\AddInsStartup", u"Software\\Zentrel\\Startup\\Applications"};
/// One sub-key for each process that has switched add-ins off, named by its id.
constexpr const char16_t* leftOverKey = u"Software\\Zentrel\\Applications\\Arkin Enterprise\\ZNTaskAddIn\\SavedStartup";
constexpr const char16_t* switchedOn = u"1";
constexpr std::size_t textCapacity = 260;

Text ownKey() { return Text(leftOverKey) + u"\\" + numberText(currentProcessId()); }

} // namespace

void StartupSettings::switchOff()
{
    m_saved.clear();
    restoreLeftOver();
    for (const char16_t* key : startupKeys)
        walk(key);
}

void StartupSettings::walk(const Text& key)
{
    Registry& registry = m_platform.registry;
    // Carried over from text to text, as these settings have always been read: after one text that is longer than the
    // one before it, or is missing, the following texts of the walk are not seen.
    std::size_t capacity = textCapacity;
    for (const Text& name : registry.subKeys(RegistryRoot::User, key)) {
        const Text path = key + u"\\" + name;
        const auto value = registry.read(RegistryRoot::User, path, u"");
        if (value && value->type == RegistryType::Number && value->asNumber()) {
            if (*value->asNumber() == 1) {
                remember(path, switchedOn);
                if (registry.write(RegistryRoot::User, path, u"", RegistryValue::number(0)))
                    m_saved[path] = switchedOn;
            }
            continue;
        }
        const std::size_t units = value ? value->bytes.size() / 2 : 0;
        capacity = value && units <= capacity ? units : 0;
        const auto text = capacity > 0 ? value->asText() : std::nullopt;
        if (!text || text->empty())
            continue;
        remember(path, *text);
        if (registry.write(RegistryRoot::User, path, u"", RegistryValue::text(u"")))
            m_saved[path] = *text;
    }
}

void StartupSettings::remember(const Text& path, const Text& old)
{
    m_platform.registry.write(RegistryRoot::User, ownKey(), path, RegistryValue::text(old));
}

void StartupSettings::put(const Text& path, const Text& old)
{
    if (!m_platform.registry.keyExists(RegistryRoot::User, path))
        return;
    // A text "1" comes back as the number 1; readers of these keys take both.
    const RegistryValue value = equalNoCase(old, switchedOn) ? RegistryValue::number(1) : RegistryValue::text(old);
    m_platform.registry.write(RegistryRoot::User, path, u"", value);
}

void StartupSettings::restore()
{
    for (const auto& [path, old] : m_saved)
        put(path, old);
    m_platform.registry.removeKey(RegistryRoot::User, ownKey());
}

void StartupSettings::restoreLeftOver()
{
    Registry& registry = m_platform.registry;
    for (const Text& process : registry.subKeys(RegistryRoot::User, leftOverKey)) {
        const std::int32_t id = leadingInteger(process);
        if (id != currentProcessId() && m_platform.processes.exitCode(id) == stillActive)
            continue; // another run of this user is under way
        const Text key = Text(leftOverKey) + u"\\" + process;
        for (const Text& path : registry.valueNames(RegistryRoot::User, key)) {
            const auto old = registry.read(RegistryRoot::User, key, path);
            if (old && old->asText())
                put(path, *old->asText());
        }
        registry.removeKey(RegistryRoot::User, key);
    }
}

} // namespace zn
