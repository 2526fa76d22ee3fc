#include "addin/macro/MacroBuilder.h"

#include "addin/macro/DateFormat.h"
#include "addin/macro/DelimiterScan.h"
#include "addin/macro/MacroText.h"
#include "addin/variables/TaskVariables.h"
#include "base/Dates.h"
#include "base/Format.h"
#include "base/Paths.h"
#include "platform/Clock.h"

#include <algorithm>

namespace zn {

namespace {

/// The per-file placeholders in the order of their steps; the card variables follow.
constexpr const char16_t* fileTokens[]
    = {u"<Filepath>", u"<Path>", u"<VaultPath>", u"<TaskInstanceGuid>", u"<SelCfgOrSheet>", u"<Revision>", u"<Version>",
        u"<WorkflowState>", u"<Today>", u"<Supported_2017ZN>", u"<Supported_2018ZN>"};

// The four parts are joined by single line feeds; the wording is part of the format.
constexpr TextView macroHead
    = u"' Please look at at ui_MacroFileAuthorized if you modify this macro.\n' Start Task Customization\n";
constexpr TextView macroTail = u"\n' End Task Customization";

template <class Interface> void requireObject(const std::shared_ptr<Interface>& object, const char* text)
{
    if (!object)
        throw StatusError(E_POINTER, text);
}

/// The year in a text such as "zn2018"; 0 if there is none.
std::int32_t yearOf(TextView appVersionText)
{
    Text year(appVersionText);
    replaceAll(year, u"zn", u"");
    return leadingInteger(year);
}

/// Names separated by commas, up to the first empty one.
std::vector<Text> splitNames(TextView list)
{
    std::vector<Text> names = split(list, u',');
    names.erase(std::find(names.begin(), names.end(), Text()), names.end());
    return names;
}

std::vector<Text> tokensFor(const std::vector<Text>& names)
{
    std::vector<Text> tokens(std::begin(fileTokens), std::end(fileTokens));
    for (const Text& name : names)
        tokens.push_back(u"%" + name + u"%");
    return tokens;
}

} // namespace

MacroBuilder::MacroBuilder(const Platform& platform)
    : m_platform(platform)
{
}

void MacroBuilder::Prepare(
    std::shared_ptr<IArkVault> vault, std::shared_ptr<IArkTaskInstance> taskInstance, const Text& templateText)
{
    requireObject(vault, "There is no vault.");
    requireObject(taskInstance, "There is no task instance.");
    m_vault = std::move(vault);
    m_taskInstance = std::move(taskInstance);
    m_vaultRoot.clear();
    m_instanceGuid.clear();
    resolveTaskPlaceholders(templateText);
    m_template = {};

    Text vaultName;
    readRunIdentity();
    checkStatus(m_vault->GetName(vaultName), "The vault's name could not be read.");
    readOutputPaths();
    readToday(vaultName);
    m_logSeen = macroLogSize();
}

void MacroBuilder::resolveTaskPlaceholders(const Text& templateText)
{
    const DelimiterScan byNameOrNumber{u'{', u'}', false, [this](TextView name, Value& value) {
                                           if (name.starts_with(u'#')) {
                                               name.remove_prefix(std::min(name.find_first_not_of(u'#'), name.size()));
                                               return m_taskInstance->GetVariable(leadingInteger(name), value);
                                           }
                                           return m_taskInstance->GetVariable(Text(name), value);
                                       }};
    const DelimiterScan byVariable{
        u'[', u']', true, [this](TextView name, Value& value) { return m_taskInstance->GetValue(name, value); }};

    m_macroText = templateText;
    for (const DelimiterScan* scan : {&byNameOrNumber, &byVariable}) {
        try {
            scan->run(m_macroText);
        } catch (const OpenDelimiterError& error) {
            // The bracket of the template itself, or else the one that a value has brought in.
            const std::size_t lastClose = templateText.rfind(scan->close);
            std::size_t position = templateText.find(scan->open, lastClose == Text::npos ? 0 : lastClose);
            TextView before = TextView(templateText).substr(0, position);
            if (position == Text::npos)
                before = TextView(m_macroText).substr(0, error.position);
            const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), u'\n')) + 1;
            const char* text
                = "The \"%s\" in line %d of the macro template has no closing bracket after it. Please close or remove "
                  "it on the task's script page.";
            const Text sentence = formatText(text, Text(1, error.delimiter), line);
            logOpenDelimiter(sentence);
            throw OpenDelimiterError(error, toUtf8(sentence));
        }
    }
}

void MacroBuilder::logOpenDelimiter(const Text& sentence)
{
    // Without its path there is no log to write to, and the failure that is on its way has the sentence.
    try {
        AppendToLog(sentence + u"\r\n");
    } catch (const StatusError&) {
        return;
    }
}

void MacroBuilder::readRunIdentity()
{
    Text root;
    Text guid;
    checkStatus(m_vault->GetRootFolderPath(root), "The vault's root folder could not be read.");
    checkStatus(m_taskInstance->GetInstanceGuid(guid), "The task instance's identifier could not be read.");
    m_vaultRoot = root.substr(0, root.find_last_not_of(u'\\') + 1);
    m_instanceGuid = guid;
}

Text MacroBuilder::variableText(TextView name) { return readText(m_taskInstance, name).value_or(Text()); }

void MacroBuilder::readOutputPaths()
{
    for (const TextView variable : {u"OutputPath", u"OutputPath2"}) {
        const Text path = variableText(variable);
        for (const TextView token : {u"<Revision>", u"<WorkflowState>"})
            m_needRevisionAndState |= path.find(token) != Text::npos;
    }
}

void MacroBuilder::readToday(TextView vaultName)
{
    m_today.clear();
    const std::int32_t style = ReadDateStyle(m_platform.registry, vaultName);
    FormatDate(m_today, dayCountFromUnix(m_platform.clock.now()), style, DateMode::DateOnly);
    replaceAll(m_today, u"/", u"_"); // the date lands in file names
}

void MacroBuilder::SetFile(
    TextView filePath, TextView cfgOrSheet, std::int32_t, std::int32_t folderId, std::int32_t version)
{
    m_filePath = filePath;
    m_fileFolder = pathFolder(filePath);
    m_cfgOrSheet = cfgOrSheet;
    m_folderId = folderId;
    m_version = version;
    if (m_needRevisionAndState)
        readRevisionAndState();
}

void MacroBuilder::readRevisionAndState()
{
    std::vector<ObjectRef> values;
    std::vector<Text> configurations;
    ArkVersionInfo info;
    checkStatus(findFile()->GetVersionInfo(m_version, m_folderId, values, configurations, info),
        "The file's version could not be read.");
    m_revision = info.revision;
    m_workflowState = info.workflowState;
}

std::shared_ptr<IArkFile> MacroBuilder::findFile()
{
    requireObject(m_vault, "There is no vault.");
    std::shared_ptr<IArkFile> file;
    checkStatus(m_vault->GetFileFromPath(m_filePath, nullptr, file), "The file could not be looked up in the vault.");
    requireObject(file, "The file is not in the vault.");
    return file;
}

Text MacroBuilder::Build(TextView appVersionText)
{
    const std::int32_t year = yearOf(appVersionText);
    std::vector<std::optional<Text>> values = {
        EncodeForMacroString(m_filePath),
        EncodeForMacroString(m_fileFolder),
        EncodeForMacroString(m_vaultRoot),
        m_instanceGuid,
        EncodeForMacroString(m_cfgOrSheet),
        EncodeForMacroString(m_revision),
        numberText(m_version),
        EncodeForMacroString(m_workflowState),
        m_today,
        ValueToMacroText(year >= 2017),
        ValueToMacroText(year >= 2018),
    };
    const std::vector<Text> names = splitNames(variableText(u"UsedVariables"));
    for (std::optional<Text>& value : cardValues(names))
        values.push_back(std::move(value));

    std::vector<Text> tokens = tokensFor(names);
    if (m_template.tokens() != tokens)
        m_template = TokenTemplate(m_macroText, std::move(tokens));
    Text macro(macroHead);
    m_template.appendTo(macro, values);
    return macro.append(macroTail);
}

/// The values of the file's card variables; none for one that could not be read, whose token stays.
std::vector<std::optional<Text>> MacroBuilder::cardValues(const std::vector<Text>& names)
{
    std::vector<std::optional<Text>> values;
    if (names.empty())
        return values;
    std::shared_ptr<IArkVariableEnumerator> card;
    checkStatus(findFile()->GetVariableEnumerator(0, card), "The file's card could not be read.");
    requireObject(card, "The file has no card.");
    const TextView configuration = m_cfgOrSheet.empty() ? TextView(u"@") : TextView(m_cfgOrSheet);
    for (const Text& name : names) {
        Value value;
        bool found = false;
        if (failed(card->GetVariable(name, configuration, m_folderId, value, found)))
            values.emplace_back();
        else
            values.emplace_back(found ? value.toText() : Text());
    }
    return values;
}

} // namespace zn
