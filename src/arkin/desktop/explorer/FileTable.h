#pragma once

#include "arkin/store/FolderListing.h"

#include <functional>
#include <optional>
#include <QAbstractTableModel>
#include <QIcon>
#include <QUrl>
#include <unordered_map>
#include <unordered_set>

namespace zn::arkin {

/// The files of one folder, as its listing has them, in the order and the choice that the user wants. Rows are made
/// when they are shown, so a folder of 100,000 files opens as fast as it is read.
class FileTable : public QAbstractTableModel {
public:
    enum Column { NameColumn, VersionColumn, StateColumn, CheckedOutColumn, SizeColumn, ChangedColumn, ownColumns };

    explicit FileTable(QObject* parent = nullptr);

    /// `cardTexts` are the card values by file, folded; asked for when the user first searches.
    void setFiles(std::vector<ListedFile> files);
    void setCardTexts(std::unordered_map<std::int32_t, std::string> texts);
    bool hasCardTexts() const { return m_hasCardTexts; }

    /// Shows the files whose name, or a value on whose card, has each word of the text.
    void setSearch(const QString& text);
    /// Shows these files only; none for all.
    void setOnly(std::optional<std::unordered_set<std::int32_t>> fileIds);
    const std::vector<ListedFile>& all() const { return m_files; }

    /// A column behind the others with a card value of each file.
    struct CardColumn {
        QString title;
        std::unordered_map<std::int32_t, std::string> values; ///< by file
    };
    void setCardColumns(std::vector<CardColumn> columns);

    const ListedFile& file(int row) const { return m_files[m_shown[static_cast<std::size_t>(row)]]; }
    /// Of the file in the present order; -1 if it isn't shown.
    int rowOf(std::int32_t fileId) const;
    int total() const { return static_cast<int>(m_files.size()); }

    /// The machine's paths of files that are dragged out.
    std::function<QList<QUrl>(const std::vector<std::int32_t>& fileIds)> urlsOf;
    /// Goes with what is dragged out, for those that know whose files they are.
    static constexpr const char* markFormat = "application/x-arkin-files";
    QByteArray mark;
    /// Files of this machine were dropped on the list.
    std::function<void(const QList<QUrl>& urls)> dropped;

    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool canDropMimeData(
        const QMimeData* data, Qt::DropAction action, int row, int column, const QModelIndex& parent) const override;
    bool dropMimeData(
        const QMimeData* data, Qt::DropAction action, int row, int column, const QModelIndex& parent) override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    QString textAt(const ListedFile& file, int column) const;
    void choose();
    bool fits(const ListedFile& file) const;
    void order();

    std::vector<ListedFile> m_files;
    std::unordered_map<std::int32_t, std::string> m_cardTexts;
    bool m_hasCardTexts = false;
    std::vector<std::size_t> m_shown; ///< places in `m_files`
    std::vector<std::string> m_words; ///< folded
    std::optional<std::unordered_set<std::int32_t>> m_only;
    std::vector<CardColumn> m_cards;
    int m_column = NameColumn;
    Qt::SortOrder m_order = Qt::AscendingOrder;
    QIcon m_icon;
};

} // namespace zn::arkin
