#include "addin/files/OutputRecord.h"

#include "addin/variables/LaunchFreedom.h"
#include "base/Paths.h"

#include <algorithm>
#include <span>

namespace zn {

namespace {

constexpr TextView cadExtensions[] = {u"zenprt", u"zenasm", u"zendrw"};

/// The bare "prt" is missing although the conversion macro takes it for a part: stored tasks rely on folders not
/// bringing such files.
constexpr TextView convertibleExtensions[]
    = {u"zenprt", u"zenasm", u"zendrw", u"drw", u"asm", u"dxf", u"dwg", u"psd", u"ai", u"lfp", u"zenlfp", u"zenptl",
        u"zenatl", u"zendtl", u"x_t", u"x_b", u"xmt_txt", u"xmt_bin", u"igs", u"iges", u"step", u"stp", u"sat", u"vda",
        u"stl", u"agr", u"xpr", u"xas", u"ipt", u"iam", u"par", u"psm", u"ckd", u"emn", u"brd", u"bdf", u"idb", u"3dm"};

bool isOneOf(TextView path, std::span<const TextView> extensions)
{
    const Text extension = textBehindLastDot(path);
    return std::any_of(
        extensions.begin(), extensions.end(), [&](TextView candidate) { return equalNoCase(extension, candidate); });
}

} // namespace

std::int32_t effectiveVersion(const OutputRecord& record)
{
    return record.version == 0 || record.version == -1 ? record.latestVersion : record.version;
}

std::int32_t selectedKind(const OutputRecord& record)
{
    if (!record.isCadFile)
        return othersSelected;
    const Text extension = textBehindLastDot(record.path);
    if (equalNoCase(extension, u"zenasm"))
        return assembliesSelected;
    return equalNoCase(extension, u"zenprt") ? partsSelected : othersSelected;
}

bool isCadFile(TextView path) { return isOneOf(path, cadExtensions); }

bool hasConvertibleExtension(TextView path) { return isOneOf(path, convertibleExtensions); }

bool isConvertibleFile(const OutputRecord& record, TaskKind kind)
{
    if (kind != TaskKind::Conversion && kind != TaskKind::Printing)
        return true;
    return hasConvertibleExtension(record.path);
}

} // namespace zn
