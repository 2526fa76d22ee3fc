#include "addin/pages/frame/PageEnvironment.h"

#include "addin/installation/ClosedLibrary.h"
#include "addin/installation/SettingsLight.h"
#include "addin/libraries/flowicons/FlowIcons.h"
#include "addin/libraries/lexmgr/LexMgr.h"
#include "addin/libraries/tokenctrl/TokenCtrl.h"
#include "platform/FileSystem.h"
#include "platform/Platform.h"
#include "qtglue/Texts.h"

namespace zn {

namespace {

lexmgr::Settings settingsOf(SettingsLight& settings, FileSystem& files)
{
    lexmgr::Settings result;
    if (const Text strings = settings.getPath(PathStringFiles); !strings.empty())
        result.stringFolder = files.toMachine(strings);
    result.language = toUtf8(settings.getLanguage());
    if (const Text help = settings.getPath(PathInstallation); !help.empty())
        result.helpFolder = files.toMachine(help + u"Help");
    return result;
}

} // namespace

PageEnvironment::PageEnvironment(const Platform& platform)
    : m_platform(platform)
{
}

PageEnvironment::~PageEnvironment() = default;

template <class Entry> Entry PageEnvironment::entryOf(const char16_t* library, const char* name)
{
    SettingsLight settings(m_platform.registry, m_platform.files, processEnvironment());
    return libraryFunction<Entry>(settings, m_platform.files, library, name);
}

std::unique_ptr<tokenctrl::TokenBox> PageEnvironment::makeTokenBox()
{
    const auto entry = entryOf<tokenctrl::LibraryEntry>(u"TokenCtrl.dll", tokenctrl::libraryEntry);
    return std::unique_ptr<tokenctrl::TokenBox>(entry(0));
}

QIcon PageEnvironment::flowIcon(flowicons::Picture picture)
{
    if (!m_flowIcons)
        m_flowIcons.reset(entryOf<flowicons::LibraryEntry>(u"FlowIcons.dll", flowicons::libraryEntry)());
    return m_flowIcons->icon(picture);
}

lexmgr::Library& PageEnvironment::lex()
{
    if (!m_lex) {
        SettingsLight settings(m_platform.registry, m_platform.files, processEnvironment());
        const auto entry
            = libraryFunction<lexmgr::LibraryEntry>(settings, m_platform.files, u"LexMgr.dll", lexmgr::libraryEntry);
        m_lex.reset(entry(settingsOf(settings, m_platform.files)));
        m_messages.speakBy(m_lex.get());
    }
    return *m_lex;
}

QString PageEnvironment::text(int number, const char16_t* defaultText, const char16_t* section, const char16_t* file)
{
    return shown(lex().TSS_internal(number, section, file, defaultText));
}

} // namespace zn
