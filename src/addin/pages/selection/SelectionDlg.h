#pragma once

#include "addin/pages/frame/Dialog.h"
#include "contracts/host/ArkVault.h"

#include <map>

class QPushButton;

namespace zn {

class IconCache;
class VListCtrl;

/// The modal dialog in which a user picks what a task works on, when it was launched with nothing selected.
class CSelectionDlg final : public Dialog {
public:
    /// Without a `taskName` the title speaks of a task. `drawingsOnly` restricts the files that are offered.
    CSelectionDlg(PageEnvironment& environment, QWidget* parent, std::shared_ptr<IArkVault> vault, const Text& taskName,
        bool drawingsOnly = false);
    ~CSelectionDlg() override;

    void AddFiles();
    void AddFolder();
    void RemoveSelected();
    /// One record for each file and folder that was added, in the order of their paths below the vault's root.
    ArkSelection GetSelection() const;

protected:
    void accept() override;

private:
    struct Item {
        std::int32_t id = 0; ///< of the file or folder
        ArkItemType type = ArkItemType::File;
        std::int32_t folderId = 0;
        std::int32_t version = 0; ///< 0 for a folder
    };

    void makeControls();
    void readVaultRoot();
    /// False for a path that the vault doesn't have. Raises the host's failure.
    bool addFile(const Text& path);
    void addPath(const Text& path, const Item& item);
    Text shortened(const Text& path) const;
    void enableRemove();
    void check(Status status);
    QString own(int number, const char16_t* defaultText) const;

    std::shared_ptr<IArkVault> m_vault;
    std::map<Text, Item> m_items; ///< by path without the vault's root
    Text m_vaultRoot;
    bool m_drawingsOnly;
    std::unique_ptr<IconCache> m_icons;
    VListCtrl* m_list;
    QPushButton* m_remove;
};

} // namespace zn
