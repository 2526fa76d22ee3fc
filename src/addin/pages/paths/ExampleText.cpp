#include "addin/pages/paths/ExampleText.h"

#include "addin/libraries/tokenctrl/TokenCtrl.h"
#include "addin/macro/DateFormat.h"
#include "addin/pages/frame/PageEnvironment.h"
#include "addin/variables/OutputFormats.h"
#include "base/Dates.h"
#include "contracts/host/ArkVault.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "qtglue/Texts.h"

namespace zn {

namespace {

/// The date as it would stand in a file name now.
Text today(const Platform& platform, TextView vaultName)
{
    Text date;
    const std::int32_t style = ReadDateStyle(platform.registry, vaultName);
    FormatDate(date, dayCountFromUnix(platform.clock.now()), style, DateMode::DateOnly);
    replaceAll(date, u"/", u"_");
    return date;
}

/// ".igs" of "IGES (*.igs)", the first one of several.
Text extensionOf(TextView formatLabel, std::int32_t formatCode)
{
    if (formatCode == promptFormatCode)
        return u".pdf";
    const std::size_t star = formatLabel.find(u'*');
    if (star == TextView::npos)
        return {};
    const TextView rest = formatLabel.substr(star + 1);
    const std::size_t semicolon = rest.find(u';');
    return Text(rest.substr(0, semicolon != TextView::npos ? semicolon : rest.find(u')')));
}

} // namespace

QString BuildExampleText(PageEnvironment& environment, IArkVault& vault, const tokenctrl::TokenBox& box,
    TextView formatLabel, std::int32_t formatCode)
{
    Text text = box.moGetText();
    const bool isEmpty = text.empty();
    Text root;
    Text vaultName;
    checkStatus(vault.GetRootFolderPath(root));
    checkStatus(vault.GetName(vaultName));

    const struct {
        TextView token;
        TextView sample;
    } samples[] = {
        {u"<Path>", root},
        {u"<Filename>", u"Part"},
        {u"<Extension>", u"zenprt"},
        {u"<Configuration>", u"Default"},
        {u"<VaultPath>", root},
        {u"<Revision>", u"A1"},
        {u"<Version>", u"1"},
        {u"<WorkflowState>", u"Approved"},
    };
    for (const auto& [token, sample] : samples)
        replaceAll(text, token, sample);
    replaceAll(text, u"<Today>", today(environment.platform(), vaultName));
    if (!isEmpty)
        text += extensionOf(formatLabel, formatCode);
    return environment.text(123, u"Example") + QStringLiteral(": ") + shown(text);
}

} // namespace zn
