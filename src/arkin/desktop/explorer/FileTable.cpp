#include "arkin/desktop/explorer/FileTable.h"

#include "arkin/desktop/frame/Texts.h"

#include <algorithm>
#include <QApplication>
#include <QDateTime>
#include <QLocale>
#include <QMimeData>
#include <QStyle>

namespace zn::arkin {

namespace {

constexpr const char* titles[] = {"Name", "Version", "State", "Checked out", "Size", "Changed"};

std::string folded(const std::string& text) { return zn::toUtf8(zn::foldCase(zn::toText(text))); }

QString checkedOutText(const ListedFile& file)
{
    if (file.checkedOutBy.empty())
        return {};
    return own("%1 on %2").arg(QString::fromStdString(file.checkedOutBy), QString::fromStdString(file.machine));
}

QString textOf(const ListedFile& file, int column)
{
    switch (column) {
    case FileTable::NameColumn:
        return QString::fromStdString(file.name);
    case FileTable::VersionColumn:
        return file.latestVersion == 0 ? QStringLiteral("-") : QString::number(file.latestVersion);
    case FileTable::StateColumn:
        return QString::fromStdString(file.state);
    case FileTable::CheckedOutColumn:
        return checkedOutText(file);
    case FileTable::SizeColumn:
        return file.size ? QLocale().formattedDataSize(*file.size, 1, QLocale::DataSizeTraditionalFormat) : QString();
    default:
        return file.madeAt == 0 ? QString()
                                : QLocale().toString(QDateTime::fromSecsSinceEpoch(file.madeAt), QLocale::ShortFormat);
    }
}

/// Below 0 if `a` comes before `b`.
int compared(const ListedFile& a, const ListedFile& b, int column)
{
    const auto sign = [](auto x, auto y) { return x < y ? -1 : x > y; };
    switch (column) {
    case FileTable::VersionColumn:
        return sign(a.latestVersion, b.latestVersion);
    case FileTable::StateColumn:
        return a.state.compare(b.state);
    case FileTable::CheckedOutColumn:
        return a.checkedOutBy.compare(b.checkedOutBy);
    case FileTable::SizeColumn:
        return sign(a.size.value_or(-1), b.size.value_or(-1));
    case FileTable::ChangedColumn:
        return sign(a.madeAt, b.madeAt);
    default:
        return 0; // the listing's own order
    }
}

} // namespace

FileTable::FileTable(QObject* parent)
    : QAbstractTableModel(parent)
    , m_icon(QApplication::style()->standardIcon(QStyle::SP_FileIcon))
{
}

void FileTable::setFiles(std::vector<ListedFile> files)
{
    beginResetModel();
    m_files = std::move(files);
    m_cardTexts.clear();
    m_hasCardTexts = false;
    choose();
    endResetModel();
}

void FileTable::setCardTexts(std::unordered_map<std::int32_t, std::string> texts)
{
    beginResetModel();
    m_cardTexts = std::move(texts);
    m_hasCardTexts = true;
    choose();
    endResetModel();
}

void FileTable::setSearch(const QString& text)
{
    beginResetModel();
    m_words.clear();
    for (const QString& word : text.split(' ', Qt::SkipEmptyParts))
        m_words.push_back(folded(word.toStdString()));
    choose();
    endResetModel();
}

void FileTable::setOnly(std::optional<std::unordered_set<std::int32_t>> fileIds)
{
    beginResetModel();
    m_only = std::move(fileIds);
    choose();
    endResetModel();
}

void FileTable::setCardColumns(std::vector<CardColumn> columns)
{
    beginResetModel();
    m_cards = std::move(columns);
    m_column = std::min(m_column, columnCount() - 1);
    choose();
    endResetModel();
}

QString FileTable::textAt(const ListedFile& file, int column) const
{
    if (column < ownColumns)
        return textOf(file, column);
    const auto& values = m_cards[static_cast<std::size_t>(column - ownColumns)].values;
    const auto value = values.find(file.fileId);
    return value == values.end() ? QString() : QString::fromStdString(value->second);
}

bool FileTable::fits(const ListedFile& file) const
{
    if (m_only && !m_only->contains(file.fileId))
        return false;
    if (m_words.empty())
        return true;
    const std::string name = folded(file.name);
    const auto card = m_cardTexts.find(file.fileId);
    return std::ranges::all_of(m_words, [&](const std::string& word) {
        return name.find(word) != std::string::npos
            || (card != m_cardTexts.end() && card->second.find(word) != std::string::npos);
    });
}

void FileTable::choose()
{
    m_shown.clear();
    m_shown.reserve(m_files.size());
    for (std::size_t i = 0; i < m_files.size(); ++i)
        if (fits(m_files[i]))
            m_shown.push_back(i);
    order();
}

void FileTable::order()
{
    const bool down = m_order == Qt::DescendingOrder;
    std::ranges::stable_sort(m_shown, [&](std::size_t a, std::size_t b) {
        const int difference = m_column < ownColumns
            ? compared(m_files[a], m_files[b], m_column)
            : QString::localeAwareCompare(textAt(m_files[a], m_column), textAt(m_files[b], m_column));
        if (difference == 0 && m_column == NameColumn)
            return down ? a > b : a < b;
        return down ? difference > 0 : difference < 0;
    });
}

void FileTable::sort(int column, Qt::SortOrder order)
{
    beginResetModel();
    m_column = column;
    m_order = order;
    std::ranges::sort(m_shown);
    this->order();
    endResetModel();
}

int FileTable::rowOf(std::int32_t fileId) const
{
    const auto hit = std::ranges::find_if(m_shown, [&](std::size_t place) { return m_files[place].fileId == fileId; });
    return hit == m_shown.end() ? -1 : static_cast<int>(hit - m_shown.begin());
}

Qt::ItemFlags FileTable::flags(const QModelIndex& index) const
{
    // What is dropped goes into the folder, wherever on the list.
    return index.isValid() ? QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled
                           : Qt::ItemIsDropEnabled;
}

QStringList FileTable::mimeTypes() const { return {"text/uri-list"}; }

QMimeData* FileTable::mimeData(const QModelIndexList& indexes) const
{
    std::vector<std::int32_t> fileIds;
    for (const QModelIndex& index : indexes)
        if (index.column() == NameColumn)
            fileIds.push_back(file(index.row()).fileId);
    auto* const data = new QMimeData;
    data->setUrls(urlsOf(fileIds));
    data->setData(markFormat, mark);
    return data;
}

bool FileTable::canDropMimeData(const QMimeData* data, Qt::DropAction, int, int, const QModelIndex&) const
{
    return data->hasUrls();
}

bool FileTable::dropMimeData(const QMimeData* data, Qt::DropAction, int, int, const QModelIndex&)
{
    dropped(data->urls());
    return true;
}

int FileTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int FileTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ownColumns + static_cast<int>(m_cards.size());
}

QVariant FileTable::data(const QModelIndex& index, int role) const
{
    const ListedFile& row = file(index.row());
    const int column = index.column();
    if (role == Qt::DisplayRole)
        return textAt(row, column);
    if (role == Qt::TextAlignmentRole && (column == VersionColumn || column == SizeColumn))
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return role == Qt::DecorationRole && column == NameColumn ? QVariant(m_icon) : QVariant();
}

QVariant FileTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    return section < ownColumns ? own(titles[section]) : m_cards[static_cast<std::size_t>(section - ownColumns)].title;
}

} // namespace zn::arkin
