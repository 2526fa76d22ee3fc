#include "zentrel/application/ModelDocExtension.h"

#include "zentrel/application/Application.h"
#include "zentrel/application/ConfigurationManager.h"
#include "zentrel/application/ExportData.h"
#include "zentrel/application/SaveAs.h"

#include <fmt/format.h>

namespace zentrel {

const MemberTable& ModelDocExtension::members() const
{
    static const Member rows[] = {
        {u"SaveAs", MemberUse::Call, u"Name Version Options ExportData Errors Warnings",
            member<&ModelDocExtension::saveAs>},
        {u"GetMBD3DPdfData", MemberUse::Call, u"", member<&ModelDocExtension::getMbd3DPdfData>},
        {u"Get3DViewNames", MemberUse::Call, u"", member<&ModelDocExtension::get3DViewNames>},
        {u"PublishTo3DPDF", MemberUse::Call, u"Data", member<&ModelDocExtension::publishTo3DPdf>},
    };
    static const MemberTable table(rows);
    return table;
}

Value ModelDocExtension::saveAs(Arguments& arguments)
{
    const SaveOutcome outcome = saveDocument(*requireOpen(m_document),
        {.path = arguments.text(0), .options = arguments.integer(2), .pdf = arguments.object<ExportPdfData>(3)});
    arguments.set(4, outcome.errors);
    arguments.set(5, outcome.warnings);
    return outcome.errors == 0;
}

Value ModelDocExtension::getMbd3DPdfData(Arguments&)
{
    requireOpen(m_document);
    return std::make_shared<Mbd3DPdfData>();
}

/// Documents keep no 3D views.
Value ModelDocExtension::get3DViewNames(Arguments&)
{
    requireOpen(m_document);
    return textArray({});
}

Value ModelDocExtension::publishTo3DPdf(Arguments& arguments)
{
    const ModelDocRef document = requireOpen(m_document);
    const auto data = arguments.object<Mbd3DPdfData>(0);
    if (!data || data->filePath().empty())
        return static_cast<std::int32_t>(PublishInvalidPath);
    document->application().report(
        fmt::format("'{}' was not written: this program does not write 3D PDF files.", zn::toUtf8(data->filePath())));
    return static_cast<std::int32_t>(PublishUnknownError);
}

} // namespace zentrel
