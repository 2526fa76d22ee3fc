#pragma once

#include "addin/pages/frame/MessageBoxes.h"
#include "base/Text.h"

#include <memory>
#include <QString>

class QIcon;

namespace flowicons {
class Library;
enum class Picture;
}
namespace lexmgr {
class Library;
}
namespace tokenctrl {
class TokenBox;
}

namespace zn {

struct Platform;
class SettingsLight;

/// What all pages and dialogs of one add-in object share: the machine, and the product's closed libraries, each loaded
/// on first use. Outlives every page.
class PageEnvironment {
public:
    /// `platform` outlives the environment. Loads nothing yet.
    explicit PageEnvironment(const Platform& platform);
    PageEnvironment(const PageEnvironment&) = delete;
    PageEnvironment& operator=(const PageEnvironment&) = delete;
    ~PageEnvironment();

    const Platform& platform() const { return m_platform; }
    MessageBoxes& messages() { return m_messages; }
    /// The library of texts and windows. Raises `StatusError` with a sentence that names what is missing.
    lexmgr::Library& lex();
    /// A new token edit, not bound to a window yet. Raises the same.
    std::unique_ptr<tokenctrl::TokenBox> makeTokenBox();
    /// An icon of the library of shared icons. Raises the same.
    QIcon flowIcon(flowicons::Picture picture);

    /// A looked-up text; the default file is the product's own. Without an entry of the language the default text.
    QString text(int number, const char16_t* defaultText, const char16_t* section = u"TS",
        const char16_t* file = u"ZNTaskAddIn");

private:
    /// The exported function of one of the closed libraries, which is loaded when it isn't yet.
    template <class Entry> Entry entryOf(const char16_t* library, const char* name);

    const Platform& m_platform;
    MessageBoxes m_messages;
    std::unique_ptr<flowicons::Library> m_flowIcons;
    std::unique_ptr<lexmgr::Library> m_lex;
};

} // namespace zn
