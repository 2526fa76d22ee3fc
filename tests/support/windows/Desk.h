#pragma once

#include "arkin/tasks/TaskProperties.h"
#include "arkin/vault/VaultObject.h"
#include "arkin/VaultFixture.h"
#include "lexmgr/LexMgr.h"
#include "pages/Pages.h"
#include "support/InstalledPlatform.h"

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

/// All that the product's windows need to open: an installation in a language, a vault with some files and card
/// variables, a task of each kind, and a host's window for the pages.
class Desk {
public:
    /// `stringFolder` is for string files of the test's own; empty for the installed ones.
    explicit Desk(const Text& language = u"GB", const std::filesystem::path& stringFolder = {});

    /// A page's setting on a new task of that kind.
    PageSetting setting(TaskKind kind, const arkin::Variables& variables = {});

    InstalledPlatform installed;
    Platform platform;
    arkin::test::TestVault vault;
    std::shared_ptr<arkin::VaultObject> vaultObject;
    arkin::TaskStore tasks;
    Pages pages;
    /// Where pages stand. Its handle is valid.
    QWidget host;
    AskedTexts asked;

private:
    int m_tasksMade = 0;
};

} // namespace zn::test
