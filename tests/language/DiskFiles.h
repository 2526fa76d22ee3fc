#pragma once

#include "base/Dates.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/SqliteRegistry.h"
#include "tests/support/TemporaryFolder.h"
#include "zentrel/application/MacroFiles.h"

namespace zn::test {

/// A machine that has one drive "C:", which is a folder.
struct OneDrive {
    explicit OneDrive(const std::filesystem::path& root)
    {
        std::filesystem::create_directories(root / "temp");
        registry.write(
            RegistryRoot::User, u"Software\\Arkin\\Drives", u"C", RegistryValue::text(toText(root.string())), {});
    }

    TemporaryFolder home;
    SqliteRegistry registry{home / "registry.sqlite"};
    LinuxFileSystem drive{registry};
};

/// The files that the CAD application gives its macros, in one folder, which is the drive "C:", and at one moment.
class DiskFiles : private OneDrive, public zentrel::MacroFiles {
public:
    explicit DiskFiles(const std::filesystem::path& root)
        : OneDrive(root)
        , MacroFiles(drive)
    {
        setCurrentFolder(u"C:\\");
    }

    bool facts(const Text& path, language::FileFacts& facts) override
    {
        const bool found = MacroFiles::facts(path, facts);
        facts.modified = facts.created = dayCount({2018, 3, 5, 14, 7, 9});
        return found;
    }
    Text temporaryFolder() override { return u"C:\\temp"; }

    /// Where a path of the drive is on this machine.
    std::filesystem::path machinePath(const Text& path) { return drive.toMachine(path); }
};

} // namespace zn::test
