#include "addin/pages/details/FileDetailsRow.h"

#include "addin/pages/lists/IconCache.h"
#include "base/Format.h"
#include "qtglue/Texts.h"

namespace zn {

namespace {

constexpr std::int32_t unknownVersion = -1;

} // namespace

FileDetailsRow::FileDetailsRow(const OutputRecord& record, TaskKind kind, std::shared_ptr<const FileDetailsLook> look)
    : m_configuration(record.selConfiguration)
    , m_printer(record.extra)
    , m_version(effectiveVersion(record))
    , m_latestVersion(record.latestVersion)
    , m_outputFile(kind == TaskKind::Conversion ? record.extra : Text())
    , m_look(std::move(look))
{
    const std::size_t separator = record.path.rfind(u'\\');
    m_name = separator == Text::npos ? record.path : record.path.substr(separator + 1);
    m_folder = separator == Text::npos ? Text() : record.path.substr(0, separator);
}

QString FileDetailsRow::text(int column) const { return textOf(columnAt(column)); }

QString FileDetailsRow::textOf(FileDetailsColumn column) const
{
    switch (column) {
    case FileDetailsColumn::Name:
        return shown(m_name);
    case FileDetailsColumn::Configuration:
        return shown(m_configuration);
    case FileDetailsColumn::Printer:
        return shown(m_printer);
    case FileDetailsColumn::Version:
        return shown(m_latestVersion == unknownVersion ? formatText("%d/-", m_version)
                                                       : formatText("%d/%d", m_version, m_latestVersion));
    case FileDetailsColumn::Folder:
        return shown(m_folder);
    case FileDetailsColumn::OutputFile:
        return shown(m_outputFile);
    }
    return {};
}

int FileDetailsRow::image(int column) const
{
    switch (columnAt(column)) {
    case FileDetailsColumn::Name:
        return m_look->icons->fileImage(m_name);
    case FileDetailsColumn::Folder:
        return m_look->icons->folderImage();
    case FileDetailsColumn::Printer:
        return m_printer.empty() ? ImageList::noImage : m_look->printerImage;
    case FileDetailsColumn::OutputFile:
        return m_outputFile.empty() ? ImageList::noImage : m_look->icons->fileImage(m_outputFile);
    default:
        return ImageList::noImage;
    }
}

} // namespace zn
