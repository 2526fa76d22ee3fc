#include "addin/pages/selection/SelectionDlg.h"

#include "addin/installation/ErrorTexts.h"
#include "addin/pages/lists/IconCache.h"
#include "addin/pages/lists/VListCtrl.h"
#include "addin/pages/selection/FileFilter.h"
#include "qtglue/Texts.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace zn {

namespace {

enum Control : int {
    OkButton = 1,
    CancelButton = 2,
    ItemList = 209,
    ListLabel = 210,
    FilesButton = 213,
    FolderButton = 214,
    RemoveButton = 215,
    HelpButton = 57671,
};

constexpr const char16_t* lexName = u"SelectionDlg";
constexpr std::int32_t browseFlags = 10; ///< several files, which exist

// Texts of the dialog's own section that belong to no control.
constexpr int titleWithTask = 1001;
constexpr int browseTitle = 1002;
constexpr int folderPrompt = 1003;
constexpr int nothingSelected = 1004;
constexpr int notInVault = 1005;

class SelectionRow final : public VListCtrlItem {
public:
    SelectionRow(Text path, int image)
        : m_path(std::move(path))
        , m_image(image)
    {
    }

    const Text& path() const { return m_path; }
    QString text(int) const override { return shown(m_path); }
    int image(int) const override { return m_image; }

private:
    Text m_path;
    int m_image;
};

} // namespace

CSelectionDlg::CSelectionDlg(PageEnvironment& environment, QWidget* parent, std::shared_ptr<IArkVault> vault,
    const Text& taskName, bool drawingsOnly)
    : Dialog(environment, parent, lexName)
    , m_vault(std::move(vault))
    , m_drawingsOnly(drawingsOnly)
    , m_icons(std::make_unique<IconCache>())
    , m_list(control<VListCtrl>(ItemList, "selection"))
    , m_remove(control<QPushButton>(RemoveButton, "remove", u"&Remove"))
{
    makeControls();
    mbInitLexWnd(u"Select Files and Folders for Task");
    if (!taskName.empty())
        setWindowTitle(own(titleWithTask, u"Select Files and Folders for %s").replace("%s", shown(taskName)));
    enableRemove();
    inSlot([this] { readVaultRoot(); });
}

CSelectionDlg::~CSelectionDlg() = default;

void CSelectionDlg::makeControls()
{
    auto* label = control<QLabel>(ListLabel, "selectionLabel", u"&Selected files and folders:");
    label->setBuddy(m_list);
    m_list->onFailure([this] { messages().tellCurrentFailure(this); });
    m_list->setImages(m_icons->images());
    m_list->addColumn({}, 10);
    m_list->header()->hide();
    m_list->setTextElideMode(Qt::ElideMiddle);
    auto* files = control<QPushButton>(FilesButton, "addFiles", u"Add &Files...");
    auto* folder = control<QPushButton>(FolderButton, "addFolder", u"Add F&older...");

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Help);
    registerControl(OkButton, buttons->button(QDialogButtonBox::Ok), "ok", u"OK");
    registerControl(CancelButton, buttons->button(QDialogButtonBox::Cancel), "cancel", u"Cancel");
    registerControl(HelpButton, buttons->button(QDialogButtonBox::Help), "help", u"&Help");

    auto* side = new QVBoxLayout;
    for (QPushButton* button : {files, folder, m_remove}) {
        button->setAutoDefault(false); // Enter is OK's
        side->addWidget(button);
    }
    side->addStretch();
    auto* middle = new QHBoxLayout;
    middle->addWidget(m_list, 1);
    middle->addLayout(side);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(label);
    whole->addLayout(middle, 1);
    whole->addWidget(buttons);
    setSizeGripEnabled(true);
    const QFontMetrics metrics(font());
    resize(metrics.averageCharWidth() * 90, metrics.height() * 24); // room for paths

    connect(files, &QPushButton::clicked, this, [this] { inSlot([this] { AddFiles(); }); });
    connect(folder, &QPushButton::clicked, this, [this] { inSlot([this] { AddFolder(); }); });
    connect(m_remove, &QPushButton::clicked, this, [this] { inSlot([this] { RemoveSelected(); }); });
    auto* deleteKey = new QShortcut(QKeySequence::Delete, m_list);
    deleteKey->setContext(Qt::WidgetShortcut);
    connect(deleteKey, &QShortcut::activated, this, [this] { inSlot([this] { RemoveSelected(); }); });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { enableRemove(); });
    connect(buttons, &QDialogButtonBox::accepted, this, &CSelectionDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CSelectionDlg::reject);
    connect(buttons, &QDialogButtonBox::helpRequested, this, [this] { inSlot([this] { mzbShowHelp(lexName); }); });
}

QString CSelectionDlg::own(int number, const char16_t* defaultText) const
{
    return environment().text(number, defaultText, lexName);
}

/// Raises a failure of the host in the catalogue's words.
void CSelectionDlg::check(Status status)
{
    if (failed(status))
        throw StatusError(status, toUtf8(errorText(status, &environment().lex())));
}

void CSelectionDlg::readVaultRoot() { check(m_vault->GetRootFolderPath(m_vaultRoot)); }

void CSelectionDlg::AddFiles()
{
    const auto lookUp = [this](int number, const char16_t* english) { return typed(ts(number, english)); };
    const Text title = typed(own(browseTitle, u"Select Files"));
    std::vector<Text> paths;
    const Status status
        = m_vault->BrowseForFile(handleOf(*this), browseFlags, title, selectionFilter(lookUp, m_drawingsOnly), paths);
    check(status);
    if (status != S_OK)
        return; // cancelled
    QStringList missing;
    for (const Text& path : paths) {
        if (!addFile(path))
            missing.append(shown(path));
    }
    if (!missing.isEmpty())
        tell(own(notInVault, u"These files are not in the vault and were left out:") + QLatin1Char('\n')
            + missing.join(QLatin1Char('\n')));
}

bool CSelectionDlg::addFile(const Text& path)
{
    std::shared_ptr<IArkFolder> folder;
    std::shared_ptr<IArkFile> file;
    const Status status = m_vault->GetFileFromPath(path, &folder, file);
    check(status);
    if (status != S_OK || !file || !folder)
        return false;
    Item item;
    check(file->GetId(item.id));
    check(folder->GetId(item.folderId));
    check(file->GetCurrentVersion(item.version));
    addPath(path, item);
    return true;
}

void CSelectionDlg::AddFolder()
{
    std::shared_ptr<IArkFolder> folder;
    const Text prompt = typed(own(folderPrompt, u"Please select a folder:"));
    const Status status = m_vault->BrowseForFolder(handleOf(*this), prompt, folder);
    check(status);
    if (status != S_OK || !folder)
        return; // cancelled
    Item item;
    item.type = ArkItemType::Folder;
    Text path;
    check(folder->GetId(item.id));
    check(folder->GetLocalPath(path));
    item.folderId = item.id;
    addPath(path, item);
}

void CSelectionDlg::addPath(const Text& path, const Item& item)
{
    // The keys are shortened paths, so this finds something only in a vault without a root. It is kept so: a path that
    // is added again gets another row.
    if (m_items.contains(path))
        return;
    const int image = item.type == ArkItemType::File ? m_icons->fileImage(path) : m_icons->folderImage();
    const Text key = shortened(path);
    m_items[key] = item;
    m_list->insertItem(m_list->itemCount(), VListCtrlItemRef(new SelectionRow(key, image)));
    m_list->showRows();
}

/// Without the vault's root, wherever it stands in the path.
Text CSelectionDlg::shortened(const Text& path) const
{
    if (m_vaultRoot.empty())
        return path;
    const Text folded = foldCase(path);
    const Text root = foldCase(m_vaultRoot);
    Text out;
    std::size_t start = 0;
    for (std::size_t hit; (hit = folded.find(root, start)) != Text::npos; start = hit + root.size())
        out.append(path, start, hit - start);
    return out.append(path, start);
}

void CSelectionDlg::RemoveSelected()
{
    const std::vector<int> positions = m_list->selectedItems();
    for (auto position = positions.rbegin(); position != positions.rend(); ++position) {
        m_items.erase(static_cast<SelectionRow&>(m_list->item(*position)).path());
        m_list->removeItem(*position);
    }
}

void CSelectionDlg::enableRemove() { mbEnableCtrl(RemoveButton, m_list->selectionModel()->hasSelection()); }

void CSelectionDlg::accept()
{
    inSlot([this] {
        if (m_list->itemCount() == 0)
            tell(own(nothingSelected, u"Please select at least one folder or file."));
        else
            Dialog::accept();
    });
}

ArkSelection CSelectionDlg::GetSelection() const
{
    ArkSelection selection;
    for (const auto& [path, item] : m_items) {
        ArkSelItem record;
        record.fileId = item.id;
        record.folderId = item.folderId;
        record.path = m_vaultRoot + path;
        record.itemType = item.type;
        record.version = item.version;
        selection.push_back(std::move(record));
    }
    return selection;
}

} // namespace zn
