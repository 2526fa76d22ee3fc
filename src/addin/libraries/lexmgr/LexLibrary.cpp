#include "addin/libraries/lexmgr/DpiHelper.h"
#include "addin/libraries/lexmgr/HelpWindow.h"
#include "addin/libraries/lexmgr/LexMgr.h"
#include "addin/libraries/lexmgr/LexWindow.h"
#include "strings/StringTable.h"

#include <QMessageBox>

#include <algorithm>

namespace lexmgr {

namespace {

class LexLibrary : public Library {
public:
    explicit LexLibrary(const Settings& settings)
        : m_strings(settings.stringFolder, settings.language)
        , m_helpFolder(settings.helpFolder)
    {
    }

    const char16_t* TSS_internal(
        int id, const char16_t* section, const char16_t* file, const char16_t* defaultText) override
    {
        const std::u16string_view inFile = file && *file ? file : currentFile();
        const std::u16string_view inSection = section ? section : u"";
        const char16_t* english = defaultText ? defaultText : u"";
        const std::u16string* text = m_strings.find(inFile, inSection, id, english);
        if (m_observer)
            m_observer({id, inSection, inFile, english, text != nullptr});
        return text ? text->c_str() : english;
    }

    void gvPushDefaultFile(std::u16string_view file) override { m_defaultFiles.emplace_back(file); }

    void gvPopDefaultFile() override
    {
        if (!m_defaultFiles.empty())
            m_defaultFiles.pop_back();
    }

    std::unique_ptr<Window> makeWindow(WindowClient* client) override
    {
        std::erase_if(m_windows, [](const auto& window) { return window.isNull(); });
        auto window = std::make_unique<LexWindow>(*this, client);
        m_windows.emplace_back(window.get());
        return window;
    }

    bool mzbShowHelp(QWidget* parent, std::u16string_view topic, std::u16string_view file, int command) override
    {
        constexpr int contents = 1;
        const std::filesystem::path folder = m_helpFolder / std::filesystem::path(file);
        const std::filesystem::path page = helpPage(folder, command == contents ? "" : zn::toUtf8(topic));
        if (page.empty()) {
            sayThatHelpIsMissing(parent, folder);
            return false;
        }
        showHelpPage(*this, parent, page);
        return true;
    }

    CDPIHelper& dpi() override
    {
        if (!m_dpi)
            m_dpi = std::make_unique<DpiHelper>();
        return *m_dpi;
    }

    void deleteDpi() override { m_dpi.reset(); }

    std::vector<std::u16string> takeProblems() override { return m_strings.takeProblems(); }

    void observe(std::function<void(const Lookup&)> observer) override { m_observer = std::move(observer); }

private:
    std::u16string_view currentFile() const
    {
        return m_defaultFiles.empty() ? std::u16string_view() : std::u16string_view(m_defaultFiles.back());
    }

    /// The client of the window that `widget` belongs to, if it has one.
    WindowClient* clientOf(const QWidget* widget) const
    {
        for (const auto& window : m_windows) {
            if (window && window->window() && widget
                && (window->window() == widget || window->window()->isAncestorOf(widget)))
                return window->client();
        }
        return nullptr;
    }

    void sayThatHelpIsMissing(QWidget* parent, const std::filesystem::path& folder)
    {
        const QString text = QString::fromUtf16(TSS_internal(6, u"HelpWindow", u"LexMgr",
                                                    u"The help is not installed: the folder \"%1\" has no help pages. "
                                                    u"Install the product again."))
                                 .arg(QString::fromStdString(folder.string()));
        WindowClient* client = clientOf(parent);
        if (!client || !client->mvMsgBox(text.toStdU16String()))
            QMessageBox::warning(parent, QString::fromUtf16(TSS_internal(1, u"HelpWindow", u"LexMgr", u"Help")), text);
    }

    zn::StringTable m_strings;
    std::filesystem::path m_helpFolder;
    std::vector<std::u16string> m_defaultFiles;
    std::vector<QPointer<LexWindow>> m_windows;
    std::unique_ptr<DpiHelper> m_dpi;
    std::function<void(const Lookup&)> m_observer;
};

} // namespace

} // namespace lexmgr

extern "C" __attribute__((visibility("default"))) lexmgr::Library* lexmgrLibrary(const lexmgr::Settings& settings)
{
    return new lexmgr::LexLibrary(settings);
}
