#include "addin/flows/MacroReach.h"

#include "addin/macro/MacroResources.h"
#include "addin/session/FindExecutable.h"
#include "addin/variables/TaskVariables.h"
#include "base/Paths.h"
#include "platform/Registry.h"

#include <algorithm>

namespace zn {

namespace {

enum Confined : std::int32_t { NoScript = 0, OwnMacros = 1, EveryScript = confineEveryScript };

/// What an editor may change without anyone having written anything: line ends, and blanks at the end.
Text withoutLineEnds(Text script)
{
    std::erase(script, u'\r');
    script.erase(script.find_last_not_of(u" \n") + 1);
    return script;
}

/// Tells texts apart that were not made to be mistaken for each other.
std::uint64_t numberOf(const Text& text)
{
    std::uint64_t number = 14695981039346656037U;
    for (const char16_t unit : text)
        number = (number ^ unit) * 1099511628211U;
    return number;
}

/// The default macros of earlier versions, which tasks still hold. Whoever changes one adds the number of the old one.
constexpr std::uint64_t formerMacros[] = {
    0xea9e58bc96ce3b96, // printing, up to 0.9.0
};

} // namespace

bool isOwnMacro(const Text& script)
{
    const Text text = withoutLineEnds(script);
    return text == withoutLineEnds(defaultMacro(TaskKind::Conversion))
        || text == withoutLineEnds(defaultMacro(TaskKind::Printing))
        || std::ranges::find(formerMacros, numberOf(text)) != std::end(formerMacros);
}

bool confinesMacro(Registry& registry, const Text& script)
{
    const auto value = registry.read(RegistryRoot::User, addInKey, confineMacrosValue);
    const std::int32_t chosen = value ? value->asNumber().value_or(OwnMacros) : OwnMacros;
    return chosen == EveryScript || (chosen != NoScript && isOwnMacro(script));
}

Text folderOfOutputs(Text path, const Text& vaultRoot, const Text& fileFolder)
{
    // A folder's own name may look like a token.
    Text folder;
    for (const auto& [token, place] :
        {std::pair<TextView, const Text&>(u"<VaultPath>", vaultRoot), {u"<Path>", fileFolder}}) {
        if (path.starts_with(token)) {
            folder = place;
            path.erase(0, token.size());
        }
    }
    const Text constant = path.substr(0, path.find_first_of(u"<%[{"));
    const std::size_t end = constant.find_last_of(u"\\/");
    folder += end == Text::npos ? Text() : constant.substr(0, end + 1);
    return isAbsolutePath(folder) ? canonicalPath(folder) : Text();
}

std::vector<Text> reachableFolders(IArkVault& vault, const ObjectRef& task, const Text& filePath, const Text& logPath)
{
    Text root;
    checkStatus(vault.GetRootFolderPath(root));
    std::vector<Text> folders = {root};
    if (!logPath.empty())
        folders.push_back(pathFolder(logPath));
    for (const TextView name : {u"OutputPath", u"OutputPath2"}) {
        const Text path = readText(task, Text(name)).value_or(Text());
        if (Text folder = folderOfOutputs(path, withoutTrailingSeparators(root), pathFolder(filePath)); !folder.empty())
            folders.push_back(std::move(folder));
    }
    return folders;
}

} // namespace zn
