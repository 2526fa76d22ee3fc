#include "zentrel/commands/Command.h"

#include "base/Paths.h"
#include "platform/linux/LinuxPlatform.h"
#include "zentrel/application/SaveAs.h"
#include "zentrel/formats/Read.h"

#include <fmt/format.h>
#include <map>
#include <set>

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

/// Where a vault's windows look for programs that draw files; a value an extension.
constexpr char16_t picturesKey[] = u"SOFTWARE\\Arkin\\Pictures";
constexpr const char16_t* pictured[]
    = {u".zenprt", u".zenasm", u".zendrw", u".step", u".stp", u".iges", u".igs", u".stl"};

/// The command line beside the program.
Text painterOf(const Text& executable) { return zn::pathAppend(zn::pathFolder(executable), u"zentrel"); }

/// Removes the class and its names as far as they are this program's; another's registration stays.
void removeRegistration(zn::Registry& registry)
{
    for (const char16_t* name : {versionedName, plainName}) {
        const auto owner = registry.read(RegistryRoot::Machine, nameKey(name) + u"\\CLSID", u"");
        if (owner && owner->asText() == Text(classId))
            registry.removeKey(RegistryRoot::Machine, nameKey(name));
    }
    const auto painter = registry.read(RegistryRoot::Machine, picturesKey, pictured[0]);
    const auto program = registry.read(RegistryRoot::Machine, classKey() + u"\\LocalServer32", u"");
    if (painter && program && painter->asText() == painterOf(program->asText().value_or(Text())))
        for (const char16_t* extension : pictured)
            registry.removeValue(RegistryRoot::Machine, picturesKey, extension);
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
    const auto write = [&](const Text& key, const char16_t* name, const RegistryValue& value) {
        if (!registry.write(RegistryRoot::Machine, key, name, value, RegistryView::Bits64))
            throw std::runtime_error("The registry key '" + zn::toUtf8(key) + "' cannot be written.");
    };
    for (const auto& [key, name, value] : values)
        write(key, name, value);
    for (const char16_t* extension : pictured)
        write(picturesKey, extension, RegistryValue::text(painterOf(executable)));
}

/// As what each kind of file can be saved, so that others can tell without a start: a value a file's extension. A
/// foreign file may come as a part or as an assembly.
void writeFormats(zn::Registry& registry)
{
    std::map<Text, std::set<Text>> saves;
    const auto add = [&](const Text& extension, DocumentKind kind) {
        for (Text& target : savedExtensions(kind))
            saves[extension].insert(std::move(target));
    };
    add(u".zenprt", DocumentKind::Part);
    add(u".zenasm", DocumentKind::Assembly);
    add(u".zendrw", DocumentKind::Drawing);
    for (const Text& extension : readExtensions()) {
        add(extension, DocumentKind::Part);
        add(extension, DocumentKind::Assembly);
    }
    for (const auto& [extension, targets] : saves) {
        Text list;
        for (const Text& target : targets)
            list += (list.empty() ? u"" : u" ") + target;
        if (!registry.write(RegistryRoot::Machine, classKey() + u"\\Saves", extension, RegistryValue::text(list),
                RegistryView::Bits64))
            throw std::runtime_error("The registry key '" + zn::toUtf8(classKey()) + "\\Saves' cannot be written.");
    }
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
        writeFormats(platform.registry());
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
