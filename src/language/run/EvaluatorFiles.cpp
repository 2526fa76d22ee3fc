#include "language/Host.h"
#include "language/run/Evaluator.h"
#include "language/run/PrintLine.h"

namespace zn::language {

namespace {

std::size_t columnBehind(const Text& text, std::size_t before)
{
    const std::size_t lineEnd = text.rfind(u'\n');
    return lineEnd == Text::npos ? before + text.size() : text.size() - lineEnd - 1;
}

} // namespace

void Evaluator::step(const PrintStep& s)
{
    NumberedFile* file = nullptr;
    if (s.file)
        file = &m_context.opened.file(longOf(evaluate(*s.file)));
    Text out;
    const std::size_t start = file ? file->column : columnBehind(m_printed, 0);
    for (const PrintItem& item : s.items) {
        const std::size_t column = columnBehind(out, start);
        if (item.kind == PrintItemKind::NextZone || (item.kind == PrintItemKind::Tab && !item.value))
            out += toNextZone(column);
        else if (item.kind == PrintItemKind::Tab)
            out += toColumn(column, longOf(evaluate(*item.value)));
        else if (item.kind == PrintItemKind::Spaces)
            out.append(static_cast<std::size_t>(std::max(0, longOf(evaluate(*item.value)))), u' ');
        else
            out += printedValue(evaluate(*item.value));
    }
    if (s.endsLine)
        out += u"\r\n";
    // An expression may have closed the file meanwhile.
    if (s.file)
        m_context.opened.file(longOf(evaluate(*s.file))).write(out);
    else
        printLines(out);
}

void Evaluator::printLines(const Text& text)
{
    m_printed += text;
    std::size_t end;
    while ((end = m_printed.find(u'\n')) != Text::npos) {
        Text line = m_printed.substr(0, end);
        m_printed.erase(0, end + 1);
        if (!line.empty() && line.back() == u'\r')
            line.pop_back();
        m_context.host.debugPrint(line);
    }
}

void Evaluator::step(const OpenStep& s)
{
    const Text path = m_context.pathOf(letValue(*s.path));
    const std::int32_t number = longOf(evaluate(*s.file));
    if (s.recordLength && longOf(evaluate(*s.recordLength)) < 1)
        raise(error::invalidCall);
    m_context.opened.open(number, path, s.mode);
}

void Evaluator::step(const CloseStep& s)
{
    if (s.files.empty())
        m_context.opened.closeAll();
    for (const ExprRef& file : s.files)
        m_context.opened.close(longOf(evaluate(*file)));
}

void Evaluator::step(const WriteStep& s)
{
    Text out;
    for (std::size_t i = 0; i < s.values.size(); ++i)
        out += (i > 0 ? u"," : u"") + writtenValue(letValue(*s.values[i]));
    m_context.opened.file(longOf(evaluate(*s.file))).write(out + u"\r\n");
}

void Evaluator::step(const InputStep& s)
{
    const std::int32_t number = longOf(evaluate(*s.file));
    for (const ExprRef& target : s.targets) {
        Value item = m_context.opened.file(number).readItem();
        // A text that reads as a number is still what a text variable wants, and no text is nothing to a number.
        if (item.isEmpty() && !target->type.isVariant())
            item = defaultValue(target->type.base);
        else if (item.type() == ValueType::String && !target->type.isVariant() && target->type.base != ValueType::String
            && !isNumeric(item) && target->type.base != ValueType::Date)
            item = std::int16_t(0);
        put(*target, std::move(item), false);
    }
}

void Evaluator::step(const LineInputStep& s)
{
    const std::int32_t number = longOf(evaluate(*s.file));
    put(*s.target, m_context.opened.file(number).readLine(), false);
}

void Evaluator::step(const SeekStep& s)
{
    const double position = numberOf(evaluate(*s.position));
    if (position < 1)
        raise(63);
    m_context.opened.file(longOf(evaluate(*s.file))).seek(static_cast<std::uint64_t>(position) - 1);
}

void Evaluator::step(const RenameStep& s)
{
    const Text from = m_context.pathOf(letValue(*s.from));
    const Text to = m_context.pathOf(letValue(*s.to));
    if (m_context.opened.isOpen(from))
        raise(error::fileAlreadyOpen);
    withFileErrors(FileOperation::Other, [&] { m_context.files.rename(from, to); });
}

} // namespace zn::language
