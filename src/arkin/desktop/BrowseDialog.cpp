#include "arkin/desktop/BrowseDialog.h"

#include "arkin/desktop/FileModel.h"
#include "arkin/desktop/FolderModel.h"
#include "arkin/desktop/frame/Texts.h"
#include "qtglue/PageInput.h"

#include <algorithm>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

QLabel* labelFor(QWidget* buddy, const char* text)
{
    auto* const label = new QLabel(own(text));
    label->setBuddy(buddy);
    buddy->setAccessibleName(own(text).remove('&').remove(':'));
    return label;
}

/// A view with its label above it.
QWidget* labelled(QWidget* view, const char* text)
{
    auto* const column = new QWidget;
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(labelFor(view, text));
    layout->addWidget(view, 1);
    return column;
}

} // namespace

BrowseDialog::BrowseDialog(zn::IArkVault& vault, const QString& title, QWidget* parent)
    : QDialog(parent)
{
    makeFolders(vault, title);
    layout()->addWidget(labelled(m_folders, "&Folders of the vault:"));
    layout()->addWidget(m_buttons);
    resize(48 * fontMetrics().averageCharWidth(), 26 * fontMetrics().lineSpacing());
}

BrowseDialog::BrowseDialog(
    zn::IArkVault& vault, const QString& title, const std::vector<FileFilter>& filters, bool several, QWidget* parent)
    : QDialog(parent)
{
    makeFolders(vault, title);
    makeFiles(filters, several);
    auto* const halves = new QSplitter;
    halves->addWidget(labelled(m_folders, "&Folders:"));
    halves->addWidget(labelled(m_files, "&Files:"));
    halves->setStretchFactor(1, 2);
    halves->setChildrenCollapsible(false);
    auto* const below = new QHBoxLayout;
    below->addWidget(labelFor(m_filter, "S&how:"));
    below->addWidget(m_filter, 1);
    auto* const whole = static_cast<QVBoxLayout*>(layout());
    whole->addWidget(halves, 1);
    whole->addLayout(below);
    whole->addWidget(m_count);
    whole->addWidget(m_buttons);
    resize(100 * fontMetrics().averageCharWidth(), 30 * fontMetrics().lineSpacing());
    enterFolder();
}

void BrowseDialog::makeFolders(zn::IArkVault& vault, const QString& title)
{
    setWindowTitle(title);
    zn::keepInputForPages(*this);
    new QVBoxLayout(this);
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_folderModel = new FolderModel(vault, this);
    m_folders = new QTreeView;
    m_folders->setObjectName("folders");
    m_folders->setHeaderHidden(true);
    m_folders->setUniformRowHeights(true);
    m_folders->setModel(m_folderModel);
    m_folders->expand(m_folderModel->root());
    m_folders->setCurrentIndex(m_folderModel->root());
}

void BrowseDialog::makeFiles(const std::vector<FileFilter>& filters, bool several)
{
    m_fileModel = new FileModel(this);
    m_fileModel->setFilter(filters.front());
    m_files = new QTreeView;
    m_files->setObjectName("files");
    m_files->setRootIsDecorated(false);
    m_files->setUniformRowHeights(true);
    m_files->setSelectionMode(several ? QTreeView::ExtendedSelection : QTreeView::SingleSelection);
    m_files->setModel(m_fileModel);
    m_files->header()->setStretchLastSection(false);
    m_files->header()->setSectionResizeMode(FileModel::NameColumn, QHeaderView::Stretch);
    giveTitlesRoom(*m_files);
    m_count = new QLabel;
    m_count->setObjectName("count");
    m_filter = new QComboBox;
    m_filter->setObjectName("filter");
    m_filter->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    for (const auto& filter : filters)
        m_filter->addItem(shown(filter.label));
    connect(m_filter, &QComboBox::currentIndexChanged, this, [this, filters](int row) {
        inSlot(this, [&] { m_fileModel->setFilter(filters.at(static_cast<std::size_t>(row))); });
    });
    connect(m_folders->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { enterFolder(); });
    connect(m_files->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { noteChoice(); });
    connect(m_fileModel, &QAbstractItemModel::modelReset, this, [this] { noteChoice(); });
    connect(m_files, &QTreeView::doubleClicked, this, &QDialog::accept);
}

void BrowseDialog::enterFolder()
{
    inSlot(this, [&] {
        if (const auto chosen = folder())
            m_fileModel->setFolder(*chosen);
    });
}

void BrowseDialog::noteChoice()
{
    inSlot(this, [&] {
        std::vector<zn::Text> now;
        for (const auto& index : m_files->selectionModel()->selectedRows())
            now.push_back(m_fileModel->path(index.row()));
        // What was chosen before stays in its place; what is new follows in the order of the list.
        std::erase_if(m_paths, [&](const auto& path) { return std::find(now.begin(), now.end(), path) == now.end(); });
        std::sort(now.begin(), now.end(), [](const auto& a, const auto& b) { return zn::compareNoCase(a, b) < 0; });
        for (const auto& path : now)
            if (std::find(m_paths.begin(), m_paths.end(), path) == m_paths.end())
                m_paths.push_back(path);
        m_buttons->button(QDialogButtonBox::Ok)->setEnabled(!m_paths.empty());
        const auto rows = m_fileModel->rowCount();
        m_count->setText(
            m_paths.empty() ? own("%1 files").arg(rows) : own("%1 of %2 files selected").arg(m_paths.size()).arg(rows));
    });
}

std::shared_ptr<zn::IArkFolder> BrowseDialog::folder() const
{
    const auto current = m_folders->currentIndex();
    return current.isValid() ? m_folderModel->folder(current) : nullptr;
}

} // namespace zn::arkin
