#include "language/run/FileTable.h"

#include "language/values/Conversions.h"

#include <algorithm>
#include <array>
#include <optional>

namespace zn::language {

namespace {

constexpr std::size_t bufferSize = 16384;
constexpr std::int32_t highestNumber = 511;

struct StatusNumber {
    Status status;
    std::int32_t number;
};

constexpr auto statusNumbers = std::to_array<StatusNumber>({
    {fileNotFound, error::fileNotFound},
    {pathNotFound, error::pathNotFound},
    {tooManyFiles, error::tooManyFiles},
    {fileAccessDenied, error::pathAccess},
    {fileIsShared, error::permissionDenied},
    {deviceFull, error::diskFull},
    {badFileName, error::badFileNumber},
    {folderNotEmpty, error::pathAccess},
    {fileExists, error::fileExists},
});

FileMode fileMode(OpenMode mode)
{
    switch (mode) {
    case OpenMode::Input:
        return FileMode::Read;
    case OpenMode::Output:
        return FileMode::Replace;
    case OpenMode::Append:
        return FileMode::Append;
    default:
        return FileMode::ReadWrite;
    }
}

} // namespace

void raiseFileError(FileOperation operation, const StatusError& failure)
{
    if (failure.status() == pathRefused)
        raise(error::permissionDenied, toText(failure.what()));
    if (operation == FileOperation::Delete && failure.status() == fileAccessDenied)
        raise(error::permissionDenied);
    if (operation == FileOperation::CreateFolder && failure.status() == fileExists)
        raise(error::pathAccess);
    const auto hit = std::ranges::find(statusNumbers, failure.status(), &StatusNumber::status);
    raise(hit != statusNumbers.end() ? hit->number : error::deviceError);
}

NumberedFile::NumberedFile(std::unique_ptr<OpenedFile> file, Text path, OpenMode mode)
    : m_file(std::move(file))
    , m_path(std::move(path))
    , m_mode(mode)
{
}

void NumberedFile::write(TextView text)
{
    if (m_mode != OpenMode::Output && m_mode != OpenMode::Append)
        raise(error::badFileMode);
    m_buffer += toReadableCodePage(text);
    const std::size_t lineEnd = text.rfind(u'\n');
    column = lineEnd == TextView::npos ? column + text.size() : text.size() - lineEnd - 1;
    if (m_buffer.size() >= bufferSize)
        flush();
}

void NumberedFile::flush()
{
    if (reads() || m_buffer.empty())
        return;
    const std::string bytes = std::move(m_buffer);
    m_buffer.clear();
    withFileErrors(FileOperation::Other, [&] { m_file->write(bytes); });
}

void NumberedFile::requireReading() const
{
    if (!reads())
        raise(error::badFileMode);
}

bool NumberedFile::fill()
{
    if (m_next < m_buffer.size())
        return true;
    if (m_ended)
        return false;
    m_buffer.resize(bufferSize);
    m_next = 0;
    m_buffer.resize(
        withFileErrors(FileOperation::Other, [this] { return m_file->read(m_buffer.data(), m_buffer.size()); }));
    m_ended = m_buffer.empty();
    return !m_ended;
}

int NumberedFile::peekByte() { return fill() ? static_cast<unsigned char>(m_buffer[m_next]) : -1; }

Text NumberedFile::readLine()
{
    requireReading();
    if (!fill())
        raise(error::pastEnd);
    std::string line;
    while (fill()) {
        const std::size_t end = m_buffer.find_first_of("\r\n", m_next);
        line.append(m_buffer, m_next, end - m_next);
        if (end == std::string::npos) {
            m_next = m_buffer.size();
            continue;
        }
        const char mark = m_buffer[end];
        m_next = end + 1;
        if (mark == '\r' && peekByte() == '\n')
            ++m_next;
        break;
    }
    return fromCodePage(line);
}

Text NumberedFile::readUnits(std::size_t count)
{
    requireReading();
    std::string bytes;
    while (bytes.size() < count) {
        if (!fill())
            raise(error::pastEnd);
        const std::size_t part = std::min(count - bytes.size(), m_buffer.size() - m_next);
        bytes.append(m_buffer, m_next, part);
        m_next += part;
    }
    return fromCodePage(bytes);
}

namespace {

/// An item that is no quoted text: a number, one of the marks of `Write #`, or plain text.
Value itemValue(const Text& text)
{
    double number = 0;
    if (equalNoCase(text, u"#TRUE#") || equalNoCase(text, u"#FALSE#"))
        return Value(equalNoCase(text, u"#TRUE#"));
    if (equalNoCase(text, u"#NULL#"))
        return NullValue{};
    if (text.empty())
        return {};
    if (text.size() > 2 && text.front() == u'#' && text.back() == u'#')
        return coerce(Value(text.substr(1, text.size() - 2)), ValueType::Date);
    if (parseNumber(text, number))
        return number;
    return text;
}

} // namespace

Value NumberedFile::readItem()
{
    requireReading();
    while (peekByte() == ' ' || peekByte() == '\t')
        ++m_next;
    if (peekByte() < 0)
        raise(error::pastEnd);
    const bool quoted = peekByte() == '"';
    std::string bytes;
    if (quoted) {
        for (++m_next; peekByte() >= 0 && peekByte() != '"'; ++m_next)
            bytes.push_back(static_cast<char>(peekByte()));
        if (peekByte() == '"')
            ++m_next;
    }
    for (int byte = peekByte(); byte >= 0 && byte != ',' && byte != '\r' && byte != '\n'; byte = peekByte()) {
        if (!quoted)
            bytes.push_back(static_cast<char>(byte));
        ++m_next;
    }
    const int end = peekByte();
    if (end >= 0)
        ++m_next;
    if (end == '\r' && peekByte() == '\n')
        ++m_next;
    return quoted ? Value(fromCodePage(bytes)) : itemValue(trim(fromCodePage(bytes)));
}

bool NumberedFile::atEnd() { return !reads() || !fill(); }

std::uint64_t NumberedFile::size()
{
    flush();
    return withFileErrors(FileOperation::Other, [this] { return m_file->size(); });
}

std::uint64_t NumberedFile::position()
{
    const std::uint64_t stored = withFileErrors(FileOperation::Other, [this] { return m_file->position(); });
    return reads() ? stored - (m_buffer.size() - m_next) : stored + m_buffer.size();
}

void NumberedFile::seek(std::uint64_t position)
{
    flush();
    m_buffer.clear();
    m_next = 0;
    m_ended = false;
    withFileErrors(FileOperation::Other, [&] { m_file->seek(position); });
}

void NumberedFile::close()
{
    flush();
    withFileErrors(FileOperation::Other, [this] { m_file->close(); });
}

bool FileTable::isOpen(const Text& path) const
{
    return std::ranges::any_of(m_files, [&](const auto& entry) { return equalNoCase(entry.second.path(), path); });
}

void FileTable::open(std::int32_t number, const Text& path, OpenMode mode)
{
    if (number < 1 || number > highestNumber)
        raise(error::badFileNumber);
    if (m_files.contains(number))
        raise(error::fileAlreadyOpen);
    const bool writes = mode == OpenMode::Output || mode == OpenMode::Append;
    if (writes && isOpen(path))
        raise(error::fileAlreadyOpen);
    if (path.empty())
        raise(error::pathAccess);
    auto file = withFileErrors(FileOperation::Open, [&] { return m_access.open(path, fileMode(mode)); });
    m_files.emplace(number, NumberedFile(std::move(file), path, mode));
}

NumberedFile& FileTable::file(std::int32_t number)
{
    const auto hit = m_files.find(number);
    if (hit == m_files.end())
        raise(error::badFileNumber);
    return hit->second;
}

void FileTable::close(std::int32_t number)
{
    const auto hit = m_files.find(number);
    if (hit == m_files.end())
        return; // closing what isn't open is no error
    NumberedFile file = std::move(hit->second);
    m_files.erase(hit);
    file.close();
}

void FileTable::closeAll()
{
    std::optional<ScriptError> first;
    while (!m_files.empty()) {
        try {
            close(m_files.begin()->first);
        } catch (const ScriptError& failure) {
            if (!first)
                first = failure;
        }
    }
    if (first)
        throw *first;
}

std::int32_t FileTable::freeNumber() const
{
    for (std::int32_t number = 1; number <= highestNumber; ++number)
        if (!m_files.contains(number))
            return number;
    raise(error::tooManyFiles);
}

} // namespace zn::language
