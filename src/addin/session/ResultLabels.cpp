#include "addin/session/ResultLabels.h"

#include "addin/variables/TaskVariables.h"

namespace zn {

namespace {

constexpr std::int32_t oneFileEach = 4;
constexpr std::int32_t outputAll = 2;
constexpr std::int32_t outputNamed = 8;

} // namespace

Text LabelRule::labelOf(const Text& active, const Text& all) const
{
    if (files & oneFileEach)
        return active;
    if (outputs & outputAll)
        return all;
    if (outputs & outputNamed)
        return named;
    return active;
}

void ResultLabels::read(const ObjectRef& task)
{
    sheets.files = readInteger(task, u"FileSheets").value_or(sheets.files);
    sheets.outputs = readInteger(task, u"OutputSheets").value_or(sheets.outputs);
    sheets.named = readText(task, u"NamedSheet").value_or(sheets.named);
    configurations.files = readInteger(task, u"FileConfs").value_or(configurations.files);
    configurations.outputs = readInteger(task, u"OutputConfs").value_or(configurations.outputs);
    configurations.named = readText(task, u"NamedConf").value_or(configurations.named);
}

} // namespace zn
