#pragma once

#include "addin/pages/frame/Dialog.h"
#include "addin/pages/print/FileRefItemImp.h"
#include "addin/pages/print/PrintSettings.h"
#include "contracts/host/ArkVault.h"

class QComboBox;
class QLabel;
class QRadioButton;
class QSpinBox;
class QScrollArea;
class QTabWidget;
class QVBoxLayout;

namespace zn {

class PrintUIMarginsDlg;
class VersionButton;

/// The dialog of a print task's launch: the selected files with their references as a tree of check boxes, and what
/// the administrator has left open about printer, paper, margins, header, footer, versions and copies.
class PrintUIDlg final : public Dialog, private IFileRefCmd {
public:
    /// `task` is the run. `selection` is what the user named; it outlives the dialog and is rewritten by `confirm`.
    PrintUIDlg(PageEnvironment& environment, QWidget* parent, std::shared_ptr<IArkVault> vault, ObjectRef task,
        ArkSelection& selection);
    ~PrintUIDlg() override;

    /// Reads variables and files and fills the controls. False when the dialog can't start; the user has been told.
    bool start();
    /// The step of OK: writes the choices to the run and the ticked files to the selection. False when it is refused;
    /// the user has been told, and the focus is where the choice is.
    bool confirm();

private:
    void makeControls();
    QWidget* makeFilesTab();
    QLayout* makeFields();
    QWidget* makeOrientation();
    QLayout* makeButtons();
    /// Takes the size at which all can be seen, as far as the screen has room.
    void fitToScreen();

    // start
    void makeMarginsTab();
    bool makeTree();
    void readFiles();
    std::shared_ptr<FileRefRows> readRows();
    void showFiles();
    void fillPrinters();
    void fillSizes();
    void showPrinterOfSize();
    void changeVersion();
    void showTotal();

    // confirm
    bool writeMargins();
    bool writeVersionAndOrientation();
    bool writePrinterAndSize();
    bool writeCopies();
    bool writeSelection();
    /// Writes one variable; on a failure tells it and puts the focus on the control.
    bool write(QWidget* focus, TextView variable, const Value& value);
    bool refuse(QWidget* focus, const QString& sentence);

    Status OnCheck(IFileRefItem& row, bool checked) override;
    Status OnExpand(IFileRefItem& row, bool expanded) override;

    void accept() override;

    QString message(int number, const char16_t* defaultText) const;
    QWidget* messageParent();
    QString hostSentence(Status status);

    std::shared_ptr<IArkVault> m_vault;
    ObjectRef m_task;
    ArkSelection& m_selection;
    PrintSettings m_settings;
    std::shared_ptr<FileRefRows> m_rows = std::make_shared<FileRefRows>();
    std::shared_ptr<IXRefTreeListCtrl> m_tree;
    QWidget* m_treeWindow = nullptr;

    QTabWidget* m_tabs = nullptr;
    VersionButton* m_referencedVersion = nullptr;
    VersionButton* m_latestVersion = nullptr;
    QVBoxLayout* m_filesLayout = nullptr;
    PrintUIMarginsDlg* m_margins = nullptr; ///< none without the tab
    QScrollArea* m_marginsTab = nullptr;    ///< around it
    QLabel* m_printerLabel = nullptr;
    QComboBox* m_printer = nullptr;
    QComboBox* m_size = nullptr;
    QWidget* m_orientation = nullptr;
    QRadioButton* m_portrait = nullptr;
    QRadioButton* m_landscape = nullptr;
    QSpinBox* m_copies = nullptr;
    QLabel* m_total = nullptr;
};

/// Shows the dialog, or does its work without the user if `show` is false, and returns true if the user confirmed.
/// The choices are then on the run, which is `cmd`'s task object, and `selection` holds the ticked files. After a
/// Cancel nothing was written.
bool showPrintDialog(PageEnvironment& environment, const std::shared_ptr<IArkVault>& vault, ArkCmd* cmd,
    ArkSelection& selection, bool show);

} // namespace zn
