#include "addin/pages/details/FileDetailsPageDlg.h"

#include "addin/files/FileLogic.h"
#include "addin/pages/details/FileDetailsRow.h"
#include "addin/pages/frame/Images.h"
#include "addin/pages/lists/IconCache.h"
#include "addin/pages/lists/VListCtrl.h"

#include <QVBoxLayout>

namespace zn {

namespace {

constexpr int fileList = 391;
constexpr const char16_t* lexName = u"FileDetailsPageDlg";

/// For which runs a column is there.
enum class Condition { Always, Finished, FinishedConversion, NotFinishedConversion, FinishedPrint };

struct ColumnRow {
    FileDetailsColumn column;
    int number; ///< of the title, in the page's own section
    const char16_t* title;
    int width; ///< in tenths of the list's width
    Condition condition;
};

constexpr ColumnRow columnRows[] = {
    {FileDetailsColumn::Name, 1, u"Source File", 3, Condition::FinishedConversion},
    {FileDetailsColumn::Name, 2, u"File Name", 3, Condition::NotFinishedConversion},
    {FileDetailsColumn::Configuration, 3, u"Configuration", 3, Condition::Finished},
    {FileDetailsColumn::Printer, 4, u"Printer", 3, Condition::FinishedPrint},
    {FileDetailsColumn::Version, 5, u"Version", 1, Condition::Always},
    {FileDetailsColumn::Folder, 6, u"Found in", 6, Condition::Always},
    {FileDetailsColumn::OutputFile, 7, u"Output File", 8, Condition::FinishedConversion},
};

bool holds(Condition condition, TaskKind kind, bool finished)
{
    switch (condition) {
    case Condition::Always:
        return true;
    case Condition::Finished:
        return finished;
    case Condition::FinishedConversion:
        return finished && kind == TaskKind::Conversion;
    case Condition::NotFinishedConversion:
        return !(finished && kind == TaskKind::Conversion);
    case Condition::FinishedPrint:
        return finished && kind == TaskKind::Printing;
    }
    return false;
}

/// The run's records with the latest versions of their files; none when the run or the vault can't be read. Raises
/// `BrokenListError`.
std::vector<OutputRecord> recordsOf(const Platform& platform, const PageSetting& setting, bool finished)
{
    try {
        FileLogic logic(platform);
        auto records = logic.ReadList(setting.task, finished);
        // Only conversions keep a list of what came out; of the other kinds a finished run shows what it was given.
        if (!records && finished)
            records = logic.ReadList(setting.task, false);
        if (!records)
            return {};
        logic.Initialize(setting.vault, TaskKind::Unknown, false);
        logic.FillLatestVersions(*setting.vault, *records);
        return std::move(*records);
    } catch (const BrokenListError&) {
        throw;
    } catch (const StatusError&) {
        return {};
    }
}

} // namespace

CFileDetailsPageDlg::CFileDetailsPageDlg(
    PageEnvironment& environment, QWidget* parent, const PageSetting& setting, bool finished)
    : Page(environment, parent, lexName)
    , m_taskKind(setting.kind)
    , m_finished(finished)
    , m_list(control<VListCtrl>(fileList, "files", u"Files of the task"))
{
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(m_list);
    m_list->onFailure([this] { messages().tellCurrentFailure(this); });
    const auto look = makeColumns();
    mbInitLexWnd();
    // A list that can't be understood leaves the page empty, but with a word about it.
    inSlot([&] { fill(setting, look); });
}

QSize CFileDetailsPageDlg::sizeHint() const
{
    const QFontMetrics metrics(font());
    constexpr int charactersOfColumn = 32; // names and folders of an ordinary length can be read
    const int characters = charactersOfColumn * m_list->model()->columnCount();
    return {characters * metrics.averageCharWidth(), 20 * metrics.lineSpacing()};
}

std::shared_ptr<const FileDetailsLook> CFileDetailsPageDlg::makeColumns()
{
    auto look = std::make_shared<FileDetailsLook>();
    look->icons = std::make_shared<IconCache>();
    look->printerImage = look->icons->images()->add(image("PNG_PRINTER"));
    m_list->setImages(look->icons->images());
    for (const ColumnRow& row : columnRows) {
        if (!holds(row.condition, m_taskKind, m_finished))
            continue;
        look->columns.push_back(row.column);
        m_list->addColumn(environment().text(row.number, row.title, lexName), row.width);
    }
    return look;
}

void CFileDetailsPageDlg::fill(const PageSetting& setting, std::shared_ptr<const FileDetailsLook> look)
{
    for (const OutputRecord& record : recordsOf(environment().platform(), setting, m_finished))
        m_list->insertItem(0, VListCtrlItemRef(new FileDetailsRow(record, m_taskKind, look)));
    m_list->showRows();
}

} // namespace zn
