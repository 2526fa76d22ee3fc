#include "addin/pages/paths/PathTokens.h"

#include "addin/libraries/tokenctrl/TokenCtrl.h"
#include "addin/pages/frame/PageEnvironment.h"
#include "addin/variables/UsedVariables.h"
#include "base/Format.h"
#include "contracts/host/ArkVault.h"
#include "qtglue/Texts.h"

#include <algorithm>

namespace zn {

namespace {

constexpr TextView vaultRootToken = u"<VaultPath>";
constexpr std::size_t labelLength = 3;

struct PathToken {
    int string;
    const char16_t* menuText;
    const char16_t* pattern;
};

constexpr PathToken pathTokens[] = {
    {23, u"Source File Name", u"<Filename>"},
    {24, u"Source File Extension", u"<Extension>"},
    {25, u"Configuration Name", u"<Configuration>"},
    {26, u"Source Folder Path", u"<Path>"},
    {27, u"Vault Root Folder Path", u"<VaultPath>"},
    {130, u"Source File Revision", u"<Revision>"},
    {131, u"Source File Version", u"<Version>"},
    {132, u"Source File Workflow State", u"<WorkflowState>"},
    {133, u"Todays Date", u"<Today>"},
};

/// Neighbours of a list with the same initial.
struct SubMenu {
    char16_t letter = 0; ///< upper case
    int count = 0;
    TextView firstName;
    TextView lastName;
};

char16_t upperInitial(TextView name) { return name.empty() ? u'\0' : toUpper(name.substr(0, 1)).front(); }

std::vector<SubMenu> subMenus(const std::vector<Text>& names)
{
    std::vector<SubMenu> groups;
    for (const Text& name : names) {
        const char16_t letter = upperInitial(name);
        if (groups.empty() || groups.back().letter != letter)
            groups.push_back({letter, 0, name, name});
        ++groups.back().count;
        groups.back().lastName = name;
    }
    return groups;
}

} // namespace

void AddPathTokens(PageEnvironment& environment, tokenctrl::TokenBox& box)
{
    for (const PathToken& token : pathTokens) {
        const Text menuText = typed(environment.text(token.string, token.menuText));
        box.mvAddPattern(token.pattern, false, menuText.c_str(), nullptr, menuText.c_str());
    }
}

VarMenuHelper::VarMenuHelper(const std::vector<Text>& names)
{
    for (const SubMenu& group : subMenus(names)) {
        if (group.count > 1)
            m_labels[group.letter]
                = formatText("%s - %s", group.firstName.substr(0, labelLength), group.lastName.substr(0, labelLength));
    }
}

Text VarMenuHelper::path(TextView name) const
{
    const auto label = name.empty() ? m_labels.end() : m_labels.find(name.front());
    return label == m_labels.end() ? Text(name) : label->second + u'\\' + Text(name);
}

void AddVariableTokens(PageEnvironment& environment, tokenctrl::TokenBox& box, const std::vector<Text>& names)
{
    const Text root = typed(environment.text(3, u"Variables", u"TS", u"VariableMgr"));
    const VarMenuHelper menu(names);
    for (const Text& name : names) {
        const Text pattern = variablePattern(name);
        const Text path = root + u'\\' + menu.path(name);
        box.mvAddPattern(pattern.c_str(), true, name.c_str(), name.c_str(), path.c_str());
    }
}

void FoldVaultRoot(tokenctrl::TokenBox& box, IArkVault& vault)
{
    const Text text = box.moGetText();
    Text root;
    if (failed(vault.GetRootFolderPath(root)) || root.empty() || text.size() < root.size())
        return;
    if (equalNoCase(TextView(text).substr(0, root.size()), root))
        box.mvSetText(Text(vaultRootToken) + text.substr(root.size()));
}

} // namespace zn
