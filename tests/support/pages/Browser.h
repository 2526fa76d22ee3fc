#pragma once

#include "arkin/vault/VaultDesktop.h"
#include "contracts/host/ArkVault.h"

#include <QWidget>

namespace zn::test {

/// A person at the vault's browsers who has decided already what to choose; nothing cancels.
class Browser : public zn::arkin::VaultDesktop {
public:
    std::vector<Text> pickFiles(IArkVault&, std::int32_t over, bool several, TextView title, TextView filter) override
    {
        note(over, (several ? "several|" : "one|") + toUtf8(title));
        askedFilter = toUtf8(filter);
        return files;
    }
    std::shared_ptr<IArkFolder> pickFolder(IArkVault& vault, std::int32_t over, TextView title) override
    {
        note(over, toUtf8(title));
        std::shared_ptr<IArkFolder> found;
        if (!folder.empty())
            checkStatus(vault.GetFolderFromPath(folder, found));
        return found;
    }

    std::vector<Text> files;
    Text folder;
    std::string asked;
    std::string askedFilter;

private:
    void note(std::int32_t over, const std::string& title)
    {
        EXPECT_NE(QWidget::find(static_cast<WId>(over)), nullptr) << title;
        asked = title;
    }
};

} // namespace zn::test
