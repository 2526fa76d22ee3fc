#pragma once

#include "strings/StringTable.h"

#include <filesystem>
#include <QTranslator>
#include <span>
#include <string>

namespace zn::arkin {

/// The language of the host's windows.
struct Language {
    std::string code;             ///< as string files have it, such as "DE"; empty or "GB" for English
    std::filesystem::path folder; ///< where the languages lie; empty for English alone
};

/// A text of the host's windows, or one that the toolkit shows in them.
struct WindowText {
    const char* context; ///< the section of the string file "Arkin"
    int number;
    const char* english; ///< what the code asks for
};
std::span<const WindowText> windowTexts();

/// Gives the toolkit the texts of a language. What its string file lacks stays English.
class Translation final : public QTranslator {
public:
    explicit Translation(const Language& language);

    QString translate(const char* context, const char* english, const char* remark, int count) const override;
    bool isEmpty() const override { return false; }

private:
    mutable zn::StringTable m_strings; ///< reads its files when they are first asked for
};

} // namespace zn::arkin
