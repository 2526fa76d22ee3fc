#pragma once

#include "base/Text.h"
#include "platform/Platform.h"

#include <map>

namespace zn {

/// Keeps the CAD application's own add-ins from loading during a run and puts their settings back afterwards.
/// Registry failures are silent: a key that could not be changed is not restored either.
///
/// What was changed is noted in the registry before each change, so that a later run restores what a worker that was
/// killed in between has left switched off.
class StartupSettings {
public:
    explicit StartupSettings(const Platform& platform)
        : m_platform(platform)
    {
    }

    /// Restores what dead processes have left over, then switches the add-ins off and remembers how they stood.
    void switchOff();
    /// Puts back what the last `switchOff` remembered. It stays remembered until the next one.
    void restore();

    /// Full registry path of a sub-key to its old default value: "1" for the number 1, else the old text.
    const std::map<Text, Text>& saved() const { return m_saved; }

private:
    void restoreLeftOver();
    void walk(const Text& key);
    void put(const Text& path, const Text& old);
    void remember(const Text& path, const Text& old);

    const Platform& m_platform;
    std::map<Text, Text> m_saved;
};

} // namespace zn
