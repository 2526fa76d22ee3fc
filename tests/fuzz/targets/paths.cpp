// Backslash paths: taking them apart and putting them together, and that none leads out of its drive's folder.
#include "base/Paths.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"
#include "tests/fuzz/Promise.h"
#include "tests/support/TestPlatform.h"

using namespace zn;
using fuzz::promise;

namespace {

/// A machine whose drive C: is an empty folder.
struct Machine {
    Machine()
    {
        std::filesystem::create_directory(drive);
        platform.ports().registry.write(
            RegistryRoot::User, u"Software\\Arkin\\Drives", u"C", RegistryValue::text(toText(drive.string())));
    }
    test::TestPlatform platform;
    std::filesystem::path drive = platform.folder.path() / "drive";
};

/// No name has a colon; one that comes to stand behind the first letter would make a drive of it.
bool hasPlainNames(TextView path)
{
    const bool hasDrive = path.size() >= 2 && path[1] == u':' && path[0] != u'\\' && path[0] != u'/';
    return path.find(u':', hasDrive ? 2 : 0) == TextView::npos;
}

void checkParts(const Text& path)
{
    promise(pathStem(path) + pathExtension(path) == pathFileName(path), "a name is its stem and its extension");
    promise(pathWithExtension(path, pathExtension(path)) == path, "the same extension changes nothing");
    promise(pathFileName(path).find_first_of(u"\\/") == Text::npos, "a name is one component");
    const Text trimmed = withoutTrailingSeparators(path);
    promise(withoutTrailingSeparators(trimmed) == trimmed, "what is trimmed stays so");
    promise(isInFolder(path, trimmed), "a path is in itself");
}

void checkCanonical(const Text& path)
{
    const Text canonical = canonicalPath(path);
    promise(canonicalPath(canonical) == canonical, "a canonical path stays so");
    promise(canonical.find(u'/') == Text::npos, "a canonical path has one kind of separators");
    promise(isAbsolutePath(canonical) || !isAbsolutePath(path), "an absolute path stays absolute");
    const Text folder = pathFolder(canonical);
    if (folder != canonical)
        promise(pathAppend(folder, pathFileName(canonical)) == canonical, "a path is its folder and its name");
}

void checkOnMachine(const Text& path)
{
    static Machine machine;
    FileSystem& files = machine.platform.machine.files();
    try {
        const auto file = files.toMachine(u"C:\\" + path).lexically_normal();
        const auto outside = file.lexically_relative(machine.drive);
        promise(!outside.empty() && *outside.begin() != "..", "no path leads out of its drive");
        const Text back = files.fromMachine(file);
        promise(files.toMachine(back) == file, "a path of the machine comes back as it was");
    } catch (const StatusError& error) {
        promise(error.status() == E_INVALIDARG, "a path that can't be is a wrong argument");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Text path = toText({reinterpret_cast<const char*>(data), size});
    checkParts(path);
    if (hasPlainNames(path))
        checkCanonical(path);
    checkOnMachine(path);
    return 0;
}
