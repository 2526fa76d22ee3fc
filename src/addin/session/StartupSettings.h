#pragma once

#include "base/Text.h"
#include "platform/Platform.h"

#include <map>

namespace zn {

struct RegistryValue;

/// Keeps add-ins of the CAD application from loading while a task runs, and puts the user's settings back afterwards.
/// What a registry doesn't let happen is passed over in silence, as a run must not fail for it.
///
/// What is switched off is also written down in the registry first, under the process that did it. When that process
/// is killed before it could put the settings back, the next one does so.
class StartupSettings {
public:
    explicit StartupSettings(const Platform& platform)
        : m_platform(platform)
    {
    }

    /// Restores what dead processes have left over, then switches off what is on.
    void switchOff();
    /// Puts back what the last `switchOff` of this object has changed. May be called again.
    void restore();
    /// Puts back what processes that no longer run have switched off. True if there was anything.
    bool restoreLeftOver();

    /// Registry path to old default value; "1" stands for the number 1.
    const std::map<Text, Text>& saved() const { return m_saved; }

private:
    void switchOffBelow(TextView key);
    void change(const Text& path, const Text& old, const RegistryValue& off);
    void putBack(const Text& path, const Text& old);
    Text journalKey() const;

    const Platform& m_platform;
    std::map<Text, Text> m_saved;
};

} // namespace zn
