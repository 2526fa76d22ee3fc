#include "zentrel/application/Application.h"

#include "base/Paths.h"
#include "zentrel/application/ExportData.h"
#include "zentrel/application/MacroRunner.h"

#include <algorithm>
#include <unistd.h>

namespace zn::zentrel {

namespace {

constexpr char16_t revision[] = u"26.0.0";
constexpr char16_t baseBuild[] = u"zn2018";
constexpr char16_t currentBuild[] = u"d180943";

/// More messages than anyone reads are dropped from the front.
constexpr std::size_t keptMessages = 200;

} // namespace

const MemberTable& Frame::members() const
{
    static const Member rows[] = {
        {u"GetHWnd", MemberUse::Call, u"", member<&Frame::getHWnd>},
        {u"KeepInVisible", MemberUse::Call, u"", member<&Frame::getKeepInvisible>},
        {u"KeepInVisible", MemberUse::Put, u"Value", member<&Frame::putKeepInvisible>},
    };
    static const MemberTable table(rows);
    return table;
}

Value Frame::getHWnd(Arguments&) { return 0; }

Value Frame::getKeepInvisible(Arguments&) { return m_keepInvisible; }

Value Frame::putKeepInvisible(Arguments& arguments)
{
    m_keepInvisible = arguments.boolean(0);
    return {};
}

Application::Application(Surroundings surroundings)
    : m_surroundings(std::move(surroundings))
    , m_confinement(m_surroundings.files)
{
}

Application::~Application()
{
    closeDocuments();
    std::error_code ignored;
    for (int number = 1; number <= m_workFolders; ++number)
        std::filesystem::remove_all(m_surroundings.workFolder / std::to_string(number), ignored);
}

void Application::report(const std::string& sentence) { keepMessage(sentence, false); }

void Application::remark(const std::string& sentence) { keepMessage(sentence, true); }

void Application::keepMessage(const std::string& sentence, bool isRemark)
{
    if (m_surroundings.log)
        m_surroundings.log(sentence);
    if (m_messages.size() == keptMessages)
        m_messages.erase(m_messages.begin());
    m_messages.push_back({zn::toText(sentence), isRemark});
}

void Application::forgetReports() { m_messages.clear(); }

std::filesystem::path Application::newWorkFolder()
{
    auto folder = m_surroundings.workFolder / std::to_string(++m_workFolders);
    std::filesystem::create_directories(folder);
    return folder;
}

void Application::runMacroWork(const std::function<void()>& work)
{
    struct Count {
        int& running;
        ~Count() { --running; }
    } const count{++m_runningMacros};
    if (m_runningMacros > 1 || !m_confinement.confines() || !m_surroundings.confined)
        return work();
    m_surroundings.confined(m_confinement.folders(), work);
}

std::filesystem::path Application::reachable(const Text& path)
{
    const Text canonical = zn::canonicalPath(path);
    if (m_runningMacros > 0)
        m_confinement.require(canonical);
    return m_surroundings.files.toMachine(canonical);
}

const MemberTable& Application::members() const
{
    static const Member rows[] = {
        {u"Zentrel", MemberUse::Call, u"", member<&Application::zentrel>},
        {u"RevisionNumber", MemberUse::Call, u"", member<&Application::revisionNumber>},
        {u"GetBuildNumbers2", MemberUse::Call, u"Base Current HotFixes", member<&Application::getBuildNumbers2>},
        {u"GetProcessID", MemberUse::Call, u"", member<&Application::getProcessId>},
        {u"Frame", MemberUse::Call, u"", member<&Application::frame>},
        {u"ExitApp", MemberUse::Call, u"", member<&Application::exitApp>},

        {u"Visible", MemberUse::Call, u"", member<&Application::getFlag<&Application::m_visible>>},
        {u"Visible", MemberUse::Put, u"Value", member<&Application::putFlag<&Application::m_visible>>},
        {u"UserControl", MemberUse::Call, u"", member<&Application::getFlag<&Application::m_userControl>>},
        {u"UserControl", MemberUse::Put, u"Value", member<&Application::putFlag<&Application::m_userControl>>},
        {u"UserControlHidden", MemberUse::Call, u"", member<&Application::getFlag<&Application::m_userControlHidden>>},
        {u"UserControlHidden", MemberUse::Put, u"Value",
            member<&Application::putFlag<&Application::m_userControlHidden>>},
        {u"SetSwitch", MemberUse::Call, u"Switch Value", member<&Application::setSwitch>},
        {u"GetSwitch", MemberUse::Call, u"Switch", member<&Application::getSwitch>},

        {u"GetUserPreferenceToggle", MemberUse::Call, u"Preference", member<&Application::getToggle>},
        {u"SetUserPreferenceToggle", MemberUse::Call, u"Preference Value", member<&Application::setToggle>},
        {u"GetUserPreferenceIntegerValue", MemberUse::Call, u"Preference", member<&Application::getInteger>},
        {u"SetUserPreferenceIntegerValue", MemberUse::Call, u"Preference Value", member<&Application::setInteger>},
        {u"GetUserPreferenceDoubleValue", MemberUse::Call, u"Preference", member<&Application::getDouble>},
        {u"SetUserPreferenceDoubleValue", MemberUse::Call, u"Preference Value", member<&Application::setDouble>},
        {u"GetUserPreferenceStringListValue", MemberUse::Call, u"Preference", member<&Application::getTextList>},
        {u"SetUserPreferenceStringListValue", MemberUse::Call, u"Preference Value", member<&Application::setTextList>},

        {u"GetOpenDocSpec", MemberUse::Call, u"FileName", member<&Application::getOpenDocSpec>},
        {u"OpenDoc6", MemberUse::Call, u"FileName Type Options Configuration Errors Warnings",
            member<&Application::openDoc6>},
        {u"OpenDoc7", MemberUse::Call, u"DocumentSpec", member<&Application::openDoc7>},
        {u"LoadFile4", MemberUse::Call, u"FileName ArgString ImportData Errors", member<&Application::loadFile4>},
        {u"ActivateDoc2", MemberUse::Call, u"Name Silent Errors", member<&Application::activateDoc2>},
        {u"ActiveDoc", MemberUse::Call, u"", member<&Application::activeDoc>},
        {u"GetFirstDocument", MemberUse::Call, u"", member<&Application::getFirstDocument>},
        {u"GetDocumentCount", MemberUse::Call, u"", member<&Application::getDocumentCount>},
        {u"QuitDoc", MemberUse::Call, u"Name", member<&Application::quitDoc>},
        {u"CloseDoc", MemberUse::Call, u"Name", member<&Application::quitDoc>},
        {u"CloseAllDocuments", MemberUse::Call, u"IncludeUnsaved", member<&Application::closeAllDocuments>},

        {u"GetExportFileData", MemberUse::Call, u"FileType", member<&Application::getExportFileData>},
        {u"GetErrorMessages", MemberUse::Call, u"Messages Ids Types", member<&Application::getErrorMessages>},
        {u"RunMacro", MemberUse::Call, u"FilePath Module Procedure", member<&Application::runMacroMember>},
        {u"RunMacro2", MemberUse::Call, u"FilePath Module Procedure Options Reason", member<&Application::runMacro2>},
        {u"ConfineMacros", MemberUse::Call, u"Folders", member<&Application::confineMacros>},
        {u"GetRefusals", MemberUse::Call, u"", member<&Application::getRefusals>},
        {u"ReadAhead", MemberUse::Call, u"Files", member<&Application::readAhead>},
    };
    static const MemberTable table(rows);
    return table;
}

/// Macros write `Application.Zentrel`.
Value Application::zentrel(Arguments&) { return std::static_pointer_cast<Application>(shared_from_this()); }

Value Application::revisionNumber(Arguments&) { return revision; }

Value Application::getBuildNumbers2(Arguments& arguments)
{
    arguments.set(0, baseBuild);
    arguments.set(1, currentBuild);
    arguments.set(2, u"");
    return {};
}

Value Application::getProcessId(Arguments&) { return static_cast<std::int32_t>(getpid()); }

Value Application::frame(Arguments&) { return m_frame; }

Value Application::exitApp(Arguments&)
{
    if (m_surroundings.exit)
        m_surroundings.exit();
    return {};
}

Value Application::getExportFileData(Arguments& arguments)
{
    if (arguments.integer(0) != enumerationValue(u"znExportPdfData"))
        return ObjectRef();
    return std::make_shared<ExportPdfData>();
}

/// Gives the messages since the last call, and forgets them. What isn't for macros stays for who drives them.
Value Application::getErrorMessages(Arguments& arguments)
{
    const auto given = std::stable_partition(m_messages.begin(), m_messages.end(),
        [&](const Message& message) { return m_runningMacros > 0 && message.isRemark; });
    std::vector<Text> texts;
    for (auto message = given; message != m_messages.end(); ++message)
        texts.push_back(message->text);
    m_messages.erase(given, m_messages.end());
    arguments.set(0, textArray(texts));
    arguments.set(1, Value::arrayOf(std::vector<Value>(texts.size(), Value(0))));
    arguments.set(2, Value::arrayOf(std::vector<Value>(texts.size(), Value(0))));
    return static_cast<std::int32_t>(texts.size());
}

Value Application::runMacroMember(Arguments& arguments)
{
    return runMacro(*this, arguments.text(0), arguments.text(1), arguments.text(2)).success;
}

Value Application::runMacro2(Arguments& arguments)
{
    const MacroOutcome outcome = runMacro(*this, arguments.text(0), arguments.text(1), arguments.text(2));
    arguments.set(4, static_cast<std::int32_t>(outcome.reason));
    return outcome.success;
}

/// From the next macro on. Only who drives the application says where its macros may go.
Value Application::confineMacros(Arguments& arguments)
{
    if (m_runningMacros > 0)
        throw StatusError(zn::E_ACCESSDENIED, "A macro can't change what macros may reach.");
    m_confinement.confine(arguments.texts(0));
    m_confinement.add(m_surroundings.workFolder);
    return {};
}

/// What macros were refused since they were confined, in sentences; a macro can't make it forget them.
Value Application::getRefusals(Arguments&) { return textArray(m_confinement.refusals()); }

std::vector<Text> Application::facilities() const
{
    return m_surroundings.readAhead ? std::vector<Text>{u"ReadAhead"} : std::vector<Text>();
}

/// Files that macros will open later. Only who drives the application knows of any.
Value Application::readAhead(Arguments& arguments)
{
    if (m_runningMacros > 0)
        throw StatusError(zn::E_ACCESSDENIED, "A macro can't have files read.");
    std::vector<std::filesystem::path> files;
    for (const Text& path : arguments.texts(0))
        files.push_back(m_surroundings.files.toMachine(zn::canonicalPath(path)));
    if (m_surroundings.readAhead)
        m_surroundings.readAhead(files, m_lastMesh);
    return {};
}

template <bool Application::*Flag> Value Application::getFlag(Arguments&) { return this->*Flag; }

template <bool Application::*Flag> Value Application::putFlag(Arguments& arguments)
{
    this->*Flag = arguments.boolean(0);
    return {};
}

Value Application::setSwitch(Arguments& arguments)
{
    m_switches[arguments.integer(0)] = arguments.boolean(1);
    return {};
}

Value Application::getSwitch(Arguments& arguments)
{
    const auto found = m_switches.find(arguments.integer(0));
    return found != m_switches.end() && found->second;
}

Value Application::getToggle(Arguments& arguments) { return m_preferences.toggle(arguments.integer(0)); }

Value Application::setToggle(Arguments& arguments)
{
    m_preferences.setToggle(arguments.integer(0), arguments.boolean(1));
    return true;
}

Value Application::getInteger(Arguments& arguments) { return m_preferences.integer(arguments.integer(0)); }

Value Application::setInteger(Arguments& arguments)
{
    m_preferences.setInteger(arguments.integer(0), arguments.integer(1));
    return true;
}

Value Application::getDouble(Arguments& arguments) { return m_preferences.decimal(arguments.integer(0)); }

Value Application::setDouble(Arguments& arguments)
{
    m_preferences.setDecimal(arguments.integer(0), arguments.value(1).toDouble());
    return true;
}

Value Application::getTextList(Arguments& arguments) { return m_preferences.textList(arguments.integer(0)); }

Value Application::setTextList(Arguments& arguments)
{
    m_preferences.setTextList(arguments.integer(0), arguments.text(1));
    return true;
}

} // namespace zn::zentrel
