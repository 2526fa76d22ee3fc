#include "language/run/ShownValue.h"

#include "base/Format.h"
#include "language/tree/Module.h"
#include "language/values/Conversions.h"
#include "language/values/Record.h"

namespace zn::language {

namespace {

constexpr std::size_t mostUnits = 60;
constexpr std::size_t mostElements = 8;
constexpr int deepest = 3; ///< values inside one another

Text shown(const Value& value, const Module& module, int depth);

Text shownText(const Text& text)
{
    Text out = u"\"";
    for (const char16_t unit : text.substr(0, mostUnits)) {
        if (unit < u' ' || unit == 0x7F)
            out += formatText("<U+%04X>", static_cast<int>(unit));
        else
            out.append(unit == u'"' ? 2 : 1, unit);
    }
    out += u'"';
    if (text.size() > mostUnits)
        out.append(u"… (").append(formatText("%d characters)", static_cast<int>(text.size())));
    return out;
}

/// The first ones, parted by commas; `name` gives what stands before each.
template <class Name>
Text shownList(const std::vector<Value>& values, const Module& module, int depth, const Name& name)
{
    if (depth >= deepest && !values.empty())
        return u"{…}";
    Text out = u"{";
    for (std::size_t i = 0; i < std::min(values.size(), mostElements); ++i)
        out.append(i == 0 ? u"" : u", ").append(name(i)).append(shown(values[i], module, depth + 1));
    return out.append(values.size() > mostElements ? u", …}" : u"}");
}

Text shownArray(const Value& value, const ArrayRef& array, const Module& module, int depth)
{
    Text type = typeNameOf(value);
    if (!array)
        return type;
    Text bounds;
    for (const ValueArray::Bound& bound : array->bounds)
        bounds.append(bounds.empty() ? u"" : u", ")
            .append(formatText("%d To %d", bound.lower, bound.lower + static_cast<std::int32_t>(bound.count) - 1));
    type.resize(type.find(u'('));
    return type.append(u"(").append(bounds).append(u") ").append(
        shownList(array->elements, module, depth, [](std::size_t) { return TextView(); }));
}

Text shownRecord(const Record& record, const Module& module, int depth)
{
    const RecordType& type = module.records[static_cast<std::size_t>(record.typeIndex)];
    return record.typeName + u" "
        + shownList(record.fields, module, depth, [&](std::size_t field) { return type.fields[field].name + u": "; });
}

Text shown(const Value& value, const Module& module, int depth)
{
    if (const auto* text = value.get<Text>())
        return shownText(*text);
    if (const auto* array = value.get<ArrayRef>())
        return shownArray(value, *array, module, depth);
    if (const auto* object = value.get<ObjectRef>()) {
        const auto record = *object ? query<Record>(*object) : nullptr;
        return record ? shownRecord(*record, module, depth) : typeNameOf(value);
    }
    if (isMissingArgument(value))
        return u"Missing";
    if (value.isEmpty() || isNull(value) || value.type() == ValueType::Error)
        return typeNameOf(value);
    return value.type() == ValueType::Date ? u"#" + textOf(value) + u"#" : textOf(value);
}

} // namespace

Text shownValue(const Value& value, const Module& module)
{
    try {
        return shown(value, module, 0);
    } catch (const ScriptError&) {
        return u"?"; // a number that has no text, such as a date beyond the calendar
    }
}

} // namespace zn::language
