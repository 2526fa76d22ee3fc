#include "addin/session/StartupSettings.h"

#include "addin/session/FindExecutable.h"
#include "base/Status.h"
#include "platform/Processes.h"
#include "platform/Registry.h"

namespace zn {

namespace {

constexpr auto user = RegistryRoot::User;
constexpr TextView startupKeys[] = {u"Software\\Zentrel\\AddInsStartup", u"Software\\Zentrel\\Startup\\Applications"};
constexpr TextView switchedOn = u"1";
/// Characters that a text read takes, its terminator included.
constexpr std::size_t firstCapacity = 260;

Text journalRoot() { return Text(addInKey).append(u"\\SavedStartup"); }

/// Reads a default value as text as long as it fits `capacity`, which becomes the length of this text, or 0 after a
/// failure. So texts longer than the one before, and all texts behind a failure, stay as they are; installations
/// count on those add-ins being loaded.
std::optional<Text> readText(const std::optional<RegistryValue>& value, std::size_t& capacity)
{
    const auto text = value ? value->asText() : std::nullopt;
    const std::size_t length = text ? value->bytes.size() / sizeof(char16_t) : 0;
    const bool fits = text && length <= capacity;
    capacity = fits ? length : 0;
    return fits ? text : std::nullopt;
}

} // namespace

Text StartupSettings::journalKey() const { return journalRoot().append(u"\\").append(numberText(currentProcessId())); }

void StartupSettings::switchOff()
{
    m_saved.clear();
    try {
        restoreLeftOver();
        for (const TextView key : startupKeys)
            switchOffBelow(key);
    } catch (const StatusError&) {
        // A registry that can't be used leaves the settings as they are.
    }
}

void StartupSettings::switchOffBelow(TextView key)
{
    std::size_t capacity = firstCapacity;
    for (const Text& name : m_platform.registry.subKeys(user, key)) {
        const Text path = Text(key).append(u"\\").append(name);
        const auto value = m_platform.registry.read(user, path, u"");
        if (value && value->type == RegistryType::Number && value->asNumber()) {
            if (*value->asNumber() == 1)
                change(path, Text(switchedOn), RegistryValue::number(0));
            continue;
        }
        const auto text = readText(value, capacity);
        if (text && !text->empty())
            change(path, *text, RegistryValue::text(u""));
    }
}

void StartupSettings::change(const Text& path, const Text& old, const RegistryValue& off)
{
    Registry& registry = m_platform.registry;
    // Without the note, a kill between the two writes would leave the add-in off for good.
    if (!registry.write(user, journalKey(), path, RegistryValue::text(old)))
        return;
    if (registry.write(user, path, u"", off))
        m_saved[path] = old;
    else
        registry.removeValue(user, journalKey(), path);
}

void StartupSettings::putBack(const Text& path, const Text& old)
{
    Registry& registry = m_platform.registry;
    if (!registry.keyExists(user, path))
        return;
    registry.write(user, path, u"", equalNoCase(old, switchedOn) ? RegistryValue::number(1) : RegistryValue::text(old));
}

void StartupSettings::restore()
{
    try {
        for (const auto& [path, old] : m_saved)
            putBack(path, old);
        m_platform.registry.removeKey(user, journalKey());
    } catch (const StatusError&) {
        // The note stays where it is, and the next run restores by it.
    }
}

bool StartupSettings::restoreLeftOver()
{
    Registry& registry = m_platform.registry;
    bool any = false;
    for (const Text& process : registry.subKeys(user, journalRoot())) {
        const std::int32_t id = leadingInteger(process);
        if (id != currentProcessId() && m_platform.processes.open(id))
            continue;
        const Text journal = journalRoot().append(u"\\").append(process);
        for (const Text& path : registry.valueNames(user, journal)) {
            const auto value = registry.read(user, journal, path);
            if (const auto old = value ? value->asText() : std::nullopt) {
                putBack(path, *old);
                any = true;
            }
        }
        registry.removeKey(user, journal);
    }
    return any;
}

} // namespace zn
