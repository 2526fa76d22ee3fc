#include "zentrel/commands/Command.h"

#include "base/Paths.h"
#include "platform/linux/LinuxPlatform.h"

#include <fmt/format.h>

namespace zn::zentrel::commands {

namespace {

using zn::RegistryRoot;
using zn::RegistryValue;
using zn::RegistryView;
using zn::Text;

constexpr char16_t classId[] = u"{6D1F0B52-8C0E-4E7B-9A53-2F64C18A7D30}";
constexpr char16_t versionedName[] = u"Zentrel.Application.26";
constexpr char16_t plainName[] = u"Zentrel.Application";
constexpr char16_t productName[] = u"ZENTREL 2018 SP0.0";
constexpr char16_t productKey[] = u"SOFTWARE\\Zentrel\\Zentrel 2018";

Text classKey() { return Text(u"SOFTWARE\\Classes\\CLSID\\") + classId; }

/// The program in the machine's list of installed products.
Text installedKey() { return Text(zn::installedProductsKey) + u"\\" + classId; }

Text nameKey(const char16_t* name) { return Text(u"SOFTWARE\\Classes\\") + name; }

/// Removes the class and its names as far as they are this program's; another's registration stays.
void removeRegistration(zn::Registry& registry)
{
    for (const char16_t* name : {versionedName, plainName}) {
        const auto owner = registry.read(RegistryRoot::Machine, nameKey(name) + u"\\CLSID", u"");
        if (owner && owner->asText() == Text(classId))
            registry.removeKey(RegistryRoot::Machine, nameKey(name));
    }
    registry.removeKey(RegistryRoot::Machine, classKey());
    registry.removeKey(RegistryRoot::Machine, productKey);
    registry.removeKey(RegistryRoot::Machine, installedKey());
}

void writeRegistration(zn::Registry& registry, const Text& executable)
{
    const struct {
        Text key;
        const char16_t* name;
        RegistryValue value;
    } values[] = {
        {nameKey(versionedName), u"", RegistryValue::text(u"ZENTREL 2018")},
        {nameKey(versionedName) + u"\\CLSID", u"", RegistryValue::text(classId)},
        {nameKey(plainName), u"", RegistryValue::text(u"ZENTREL")},
        {nameKey(plainName) + u"\\CLSID", u"", RegistryValue::text(classId)},
        {nameKey(plainName) + u"\\CurVer", u"", RegistryValue::text(versionedName)},
        {classKey(), u"", RegistryValue::text(u"ZENTREL application")},
        {classKey() + u"\\LocalServer32", u"", RegistryValue::text(executable)},
        {classKey() + u"\\ProgID", u"", RegistryValue::text(versionedName)},
        {classKey() + u"\\VersionIndependentProgID", u"", RegistryValue::text(plainName)},
        {Text(productKey) + u"\\Setup", u"Zentrel Folder", RegistryValue::text(zn::pathFolder(executable))},
        {Text(productKey) + u"\\Setup", u"Zentrel Office Installed", RegistryValue::number(1)},
        {installedKey(), zn::productNameValue, RegistryValue::text(productName)},
    };
    for (const auto& [key, name, value] : values)
        if (!registry.write(RegistryRoot::Machine, key, name, value, RegistryView::Bits64))
            throw std::runtime_error("The registry key '" + zn::toUtf8(key) + "' cannot be written.");
}

std::filesystem::path besideThisProgram()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "ZENTREL.EXE";
}

struct Register {
    const Common* common;
    std::filesystem::path executable = {};

    void declare(Arguments& take)
    {
        take.option("--executable", executable, "The program (default: ZENTREL.EXE beside this one)").shownAs("FILE");
    }

    int run() const
    {
        const auto program = std::filesystem::absolute(executable.empty() ? besideThisProgram() : executable);
        if (program.filename() != "ZENTREL.EXE" || !std::filesystem::is_regular_file(program))
            throw std::runtime_error(program.string() + " is not there, or is not named ZENTREL.EXE.");
        zn::LinuxPlatform platform(zn::Home::open(common->home));
        writeRegistration(platform.registry(), platform.files().fromMachine(program));
        fmt::print("Registered {}\n", program.string());
        return zn::commandline::done;
    }
};

struct Unregister {
    const Common* common;

    void declare(Arguments&) { }

    int run() const
    {
        zn::LinuxPlatform platform(zn::Home::open(common->home));
        removeRegistration(platform.registry());
        return zn::commandline::done;
    }
};

} // namespace

Subcommand registerCommand(const Common& common)
{
    return subcommand<Register>("register", "Registers the CAD application, so that workers find it", &common);
}

Subcommand unregisterCommand(const Common& common)
{
    return subcommand<Unregister>("unregister", "Removes the registration of the CAD application", &common);
}

} // namespace zn::zentrel::commands
