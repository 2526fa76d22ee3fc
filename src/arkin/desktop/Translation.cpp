#include "arkin/desktop/Translation.h"

#include "arkin/desktop/Texts.h"

#include <string_view>

namespace zn::arkin {

namespace {

// "QPlatformTheme" is the toolkit's own context, in which it asks for the texts of standard buttons.
constexpr WindowText texts[] = {
    {"Desktop", 1, "&Folders of the vault:"},
    {"Desktop", 2, "&Folders:"},
    {"Desktop", 3, "&Files:"},
    {"Desktop", 4, "S&how:"},
    {"Desktop", 5, "%1 files"},
    {"Desktop", 6, "%1 of %2 files selected"},
    {"Desktop", 7, "All files"},
    {"Desktop", 8, "Name"},
    {"Desktop", 9, "Version"},
    {"Desktop", 10, "Run %1 of “%2”"},
    {"Desktop", 11, "&Refresh"},
    {"Desktop", 12, "Properties of the Task “%1”"},
    {"Desktop", 13, "Pages"},
    {"Desktop", 14, "The add-in doesn't accept the settings."},
    {"Desktop", 15, "Somebody else"},
    {"Desktop", 16,
        "%1 has changed this task on %2, while it was open here. Do you want to replace "
        "those settings with yours?"},
    {"Desktop", 17, "&Replace"},
    {"Desktop", 18, "&Messages:"},
    {"Desktop", 19, "%1, %2 of %3 failed"},
    {"RunState", 1, "queued"},
    {"RunState", 2, "running"},
    {"RunState", 3, "suspended"},
    {"RunState", 4, "cancel requested"},
    {"RunState", 5, "finished"},
    {"RunState", 6, "cancelled"},
    {"RunState", 7, "finished with errors"},
    {"RunState", 8, "suspend requested"},
    {"RunState", 9, "resume requested"},
    {"RunState", 10, "worker died (running)"},
    {"RunState", 11, "worker died (cancel requested)"},
    {"RunState", 12, "worker died (suspend requested)"},
    {"RunState", 13, "worker died (resume requested)"},
    {"RefTree", 1, "File"},
    {"RefTree", 2, "State"},
    {"RefTree", 3, "Version"},
    {"RefTree", 4, "Configuration"},
    {"RefTree", 5, "Found in"},
    {"RefTree", 6, "Latest"},
    {"QPlatformTheme", 1, "OK"},
    {"QPlatformTheme", 2, "Cancel"},
    {"QPlatformTheme", 3, "Close"},
    {"QPlatformTheme", 4, "&Yes"},
    {"QPlatformTheme", 5, "&No"},
    {"QPlatformTheme", 6, "Help"},
};

} // namespace

std::span<const WindowText> windowTexts() { return texts; }

Translation::Translation(const Language& language)
    : m_strings(language.folder, language.code)
{
}

QString Translation::translate(const char* context, const char* english, const char*, int) const
{
    for (const WindowText& text : texts) {
        if (std::string_view(text.context) != context || std::string_view(text.english) != english)
            continue;
        const zn::Text* found
            = m_strings.find(u"Arkin", zn::toText(text.context), text.number, zn::toText(text.english));
        return found ? shown(*found) : QString();
    }
    return {};
}

} // namespace zn::arkin
