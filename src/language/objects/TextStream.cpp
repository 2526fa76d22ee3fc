#include "language/objects/TextStream.h"

#include "language/objects/Arguments.h"
#include "language/run/FileTable.h"

#include <algorithm>

namespace zn::language {

namespace {

constexpr std::string_view wideMark = "\xFF\xFE";

std::string wideBytes(TextView text)
{
    std::string bytes;
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

Text fromWideBytes(std::string_view bytes)
{
    Text text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text.push_back(static_cast<char16_t>(
            static_cast<unsigned char>(bytes[i]) | static_cast<unsigned char>(bytes[i + 1]) << 8));
    return text;
}

std::string allBytes(OpenedFile& file)
{
    std::string bytes;
    char buffer[16384];
    while (const std::size_t count = file.read(buffer, sizeof buffer))
        bytes.append(buffer, count);
    return bytes;
}

class TextStream : public DispatchObject {
public:
    TextStream(std::unique_ptr<OpenedFile> file, StreamMode mode, bool wide)
        : m_file(std::move(file))
        , m_mode(mode)
        , m_wide(wide)
    {
        withFileErrors(FileOperation::Open, [this] { begin(); });
    }

    ~TextStream() override
    {
        try {
            flush();
        } catch (const StatusError&) {
            return; // `Close` is where a macro learns of it
        }
    }

    Text typeName() const override { return u"TextStream"; }

    Value invoke(MemberCall& call) override
    {
        const auto is = [&](TextView name) { return equalNoCase(call.name, name); };
        if (is(u"Close"))
            return close();
        if (!m_file)
            raise(error::objectNotSet);
        if (is(u"AtEndOfStream"))
            return Value(m_at >= m_text.size());
        if (is(u"AtEndOfLine"))
            return Value(m_at >= m_text.size() || m_text[m_at] == u'\r' || m_text[m_at] == u'\n');
        if (is(u"Line"))
            return m_line;
        if (is(u"Column"))
            return m_column;
        return m_mode == StreamMode::Read ? readMember(call) : writeMember(call);
    }

private:
    void begin()
    {
        if (m_mode == StreamMode::Read) {
            const std::string bytes = allBytes(*m_file);
            const bool marked = bytes.starts_with(wideMark);
            m_text = marked || m_wide ? fromWideBytes(std::string_view(bytes).substr(marked ? wideMark.size() : 0))
                                      : fromCodePage(bytes);
        } else if (m_wide && m_file->size() == 0) {
            m_file->write(wideMark);
        }
    }

    Value readMember(const MemberCall& call)
    {
        const auto is = [&](TextView name) { return equalNoCase(call.name, name); };
        if (is(u"ReadLine"))
            return readLine();
        if (is(u"ReadAll"))
            return taken(m_text.size() - m_at);
        if (is(u"Read"))
            return taken(count(call));
        if (is(u"Skip"))
            return taken(count(call)), Value();
        if (is(u"SkipLine"))
            return readLine(), Value();
        raise(is(u"Write") || is(u"WriteLine") || is(u"WriteBlankLines") ? error::badFileMode : error::memberMissing);
    }

    Value writeMember(const MemberCall& call)
    {
        const auto is = [&](TextView name) { return equalNoCase(call.name, name); };
        if (is(u"Write"))
            write(ArgumentList(call, {u"Text"}).text(0));
        else if (is(u"WriteLine"))
            write(ArgumentList(call, {u"Text"}).text(0, {}) + u"\r\n");
        else if (is(u"WriteBlankLines"))
            for (std::size_t left = count(call); left > 0; --left)
                write(u"\r\n");
        else
            raise(is(u"ReadLine") || is(u"ReadAll") || is(u"Read") ? error::badFileMode : error::memberMissing);
        return {};
    }

    static std::size_t count(const MemberCall& call)
    {
        const std::int32_t number = longOf(ArgumentList(call, {u"Count"}).required(0));
        if (number < 0)
            raise(error::invalidCall);
        return static_cast<std::size_t>(number);
    }

    void moveOver(TextView text)
    {
        for (const char16_t unit : text) {
            m_column = unit == u'\n' ? 1 : m_column + 1;
            m_line += unit == u'\n' ? 1 : 0;
        }
    }

    Text taken(std::size_t length)
    {
        if (m_at >= m_text.size() && length > 0)
            raise(error::pastEnd);
        Text out = m_text.substr(m_at, length);
        m_at += out.size();
        moveOver(out);
        return out;
    }

    Text readLine()
    {
        if (m_at >= m_text.size())
            raise(error::pastEnd);
        const std::size_t end = std::min(m_text.find(u'\n', m_at), m_text.size());
        Text line = taken(std::min(end + 1, m_text.size()) - m_at);
        while (!line.empty() && (line.back() == u'\n' || line.back() == u'\r'))
            line.pop_back();
        return line;
    }

    void write(const Text& text)
    {
        m_pending += m_wide ? wideBytes(text) : toReadableCodePage(text);
        moveOver(text);
        constexpr std::size_t enough = 16384;
        if (m_pending.size() >= enough)
            withFileErrors(FileOperation::Other, [this] { flush(); });
    }

    void flush()
    {
        if (!m_file || m_pending.empty())
            return;
        const std::string bytes = std::move(m_pending);
        m_pending.clear();
        m_file->write(bytes);
    }

    Value close()
    {
        if (!m_file)
            return {};
        withFileErrors(FileOperation::Other, [this] {
            flush();
            m_file->close();
        });
        m_file.reset();
        return {};
    }

    std::unique_ptr<OpenedFile> m_file;
    StreamMode m_mode;
    bool m_wide;
    Text m_text; ///< the whole file, when reading
    std::size_t m_at = 0;
    std::string m_pending;
    std::int32_t m_line = 1;
    std::int32_t m_column = 1;
};

FileMode fileMode(StreamMode mode)
{
    return mode == StreamMode::Read ? FileMode::Read : mode == StreamMode::Write ? FileMode::Replace : FileMode::Append;
}

} // namespace

DispatchRef openTextStream(FileAccess& files, const Text& path, StreamMode mode, bool wide)
{
    auto file = withFileErrors(FileOperation::Open, [&] { return files.open(path, fileMode(mode)); });
    return std::make_shared<TextStream>(std::move(file), mode, wide);
}

} // namespace zn::language
