#pragma once

#include "contracts/host/ArkVault.h"

#include <QWidget>

namespace zn::test {

/// The real vault, with a person at its browsers who has decided already what to choose.
class BrowsedVault : public IArkVault {
public:
    explicit BrowsedVault(std::shared_ptr<IArkVault> real)
        : m_real(std::move(real))
    {
    }

    Status BrowseForFile(
        std::int32_t window, std::int32_t flags, TextView title, TextView filter, std::vector<Text>& paths) override
    {
        asked = std::to_string(flags) + "|" + toUtf8(title);
        askedFilter = toUtf8(filter);
        askedOverWindow = QWidget::find(static_cast<WId>(window)) != nullptr;
        if (answer == S_OK)
            paths = files;
        return answer;
    }
    Status BrowseForFolder(std::int32_t, TextView title, std::shared_ptr<IArkFolder>& folder) override
    {
        asked = toUtf8(title);
        return answer == S_OK ? m_real->GetFolderFromPath(folderPath, folder) : answer;
    }
    Status GetRootFolderPath(Text& path) override { return m_real->GetRootFolderPath(path); }
    Status GetName(Text& name) override { return m_real->GetName(name); }
    Status GetFileFromPath(TextView path, std::shared_ptr<IArkFolder>* folder, std::shared_ptr<IArkFile>& file) override
    {
        return path == failing ? E_ARK_PERMISSION_DENIED : m_real->GetFileFromPath(path, folder, file);
    }
    Status GetFolderFromPath(TextView path, std::shared_ptr<IArkFolder>& folder) override
    {
        return m_real->GetFolderFromPath(path, folder);
    }
    Status CreateUtility(ArkUtility kind, ObjectRef& utility) override { return m_real->CreateUtility(kind, utility); }
    Status GetErrorText(Status code, Text& name, Text& description) override
    {
        return m_real->GetErrorText(code, name, description);
    }

    Status answer = S_OK; ///< of the browsers; 1 cancels
    std::vector<Text> files;
    Text folderPath;
    Text failing; ///< a file that the vault won't look up
    std::string asked;
    std::string askedFilter;
    bool askedOverWindow = false;

private:
    std::shared_ptr<IArkVault> m_real;
};

} // namespace zn::test
