#include "arkin/tasks/RunValues.h"

#include "base/Dates.h"

namespace zn::arkin {

using zn::Value;

namespace {

struct Row {
    std::int32_t number;
    const char16_t* name;
    Value (*read)(const RunSetting&);
};

const Row rows[] = {
    {1, u"RunGuid", [](const RunSetting& s) { return Value(s.guid); }},
    {2, u"TaskName", [](const RunSetting& s) { return Value(s.taskName); }},
    {3, u"UserName", [](const RunSetting& s) { return Value(s.userName); }},
    {4, u"VaultName", [](const RunSetting& s) { return Value(s.vaultName); }},
    {5, u"VaultRoot", [](const RunSetting& s) { return Value(s.vaultRoot); }},
    {6, u"HostName", [](const RunSetting& s) { return Value(s.hostName); }},
    {7, u"RunNumber", [](const RunSetting& s) { return Value(s.runId); }},
    {8, u"LaunchTime",
        [](const RunSetting& s) {
            return Value(zn::DateValue{s.launchedAt == 0 ? 0.0 : zn::dayCountFromUnix(s.launchedAt)});
        }},
};

} // namespace

std::vector<zn::Text> runValueNames()
{
    std::vector<zn::Text> names;
    for (const auto& row : rows) {
        names.emplace_back(row.name);
        names.push_back(u"#" + zn::toText(std::to_string(row.number)));
    }
    return names;
}

zn::Status runValue(const RunSetting& setting, const Value& idOrName, Value& value)
{
    const bool byNumber = idOrName.type() != zn::ValueType::String;
    for (const auto& row : rows) {
        if (byNumber ? row.number == idOrName.toInt32() : zn::equalNoCase(row.name, *idOrName.get<zn::Text>())) {
            value = row.read(setting);
            return zn::S_OK;
        }
    }
    value = Value();
    return zn::S_FALSE;
}

} // namespace zn::arkin
