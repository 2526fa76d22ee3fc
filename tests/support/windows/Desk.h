#pragma once

#include "addin/pages/Pages.h"
#include "arkin/store/References.h"
#include "arkin/store/Vault.h"
#include "arkin/tasks/TaskStore.h"
#include "arkin/vault/VaultObject.h"
#include "tests/support/InstalledPlatform.h"

#include <QWidget>

#include <map>
#include <tuple>

namespace zn::test {

/// A text that a window asked for: file, section, number.
using TextKey = std::tuple<Text, Text, int>;
/// What the windows asked for, with the English text and whether the language has it.
struct AskedText {
    Text english;
    bool found = false;
};
using AskedTexts = std::map<TextKey, AskedText>;

/// All that the product's windows need to open: an installation in a language, a vault "Demo" at "C:\Vault" with some
/// card variables, tasks, and a host's window for the pages.
class Desk {
public:
    /// `stringFolder` is for string files of the test's own; empty for the installed ones.
    explicit Desk(const Text& language = u"GB", const std::filesystem::path& stringFolder = {});

    /// A page's setting on a new task of that kind.
    PageSetting setting(TaskKind kind, const zn::arkin::Variables& variables = {});
    /// Adds a file that refers to others, and checks it in.
    zn::arkin::Place addFile(const std::string& relative, const std::vector<zn::arkin::Place>& targets = {});
    /// The path of a file of the vault.
    static Text path(const std::string& relative);
    std::int32_t window() const { return static_cast<std::int32_t>(host.winId()); }

    InstalledPlatform installed;
    Platform platform;
    zn::arkin::Store store;
    zn::arkin::Vault vault;
    std::shared_ptr<zn::arkin::VaultObject> vaultObject;
    Pages pages;
    /// Where pages stand.
    QWidget host;
    AskedTexts asked;

private:
    int m_tasksMade = 0;
};

} // namespace zn::test
