#include "zentrel/application/ModelDocExtension.h"

#include "zentrel/application/Application.h"
#include "zentrel/application/ConfigurationManager.h"
#include "zentrel/application/ExportData.h"
#include "zentrel/application/SaveAs.h"

#include <fmt/format.h>

namespace zn::zentrel {

namespace {

/// A list of numbers; a single one counts as a list of one, nothing as none.
std::vector<std::int32_t> integers(const Value& value)
{
    std::vector<std::int32_t> numbers;
    if (const auto* array = value.get<zn::ArrayRef>(); array && *array) {
        for (const Value& element : (*array)->elements)
            numbers.push_back(element.toInt32());
    } else if (value.type() != zn::ValueType::Empty && value.type() != zn::ValueType::Null) {
        numbers.push_back(value.toInt32());
    }
    return numbers;
}

} // namespace

const MemberTable& ModelDocExtension::members() const
{
    static const Member rows[] = {
        {u"SaveAs", MemberUse::Call, u"Name Version Options ExportData Errors Warnings",
            member<&ModelDocExtension::saveAs>},
        {u"GetMBD3DPdfData", MemberUse::Call, u"", member<&ModelDocExtension::getMbd3DPdfData>},
        {u"Get3DViewNames", MemberUse::Call, u"", member<&ModelDocExtension::get3DViewNames>},
        {u"PublishTo3DPDF", MemberUse::Call, u"Data", member<&ModelDocExtension::publishTo3DPdf>},
        {u"UsePageSetup", MemberUse::Call, u"", member<&ModelDocExtension::getUsePageSetup>},
        {u"UsePageSetup", MemberUse::Put, u"Value", member<&ModelDocExtension::putUsePageSetup>},
        {u"PrintOut2", MemberUse::Call, u"Sheets Copies Collate Printer FileName",
            member<&ModelDocExtension::printOut2>},
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

Value ModelDocExtension::getUsePageSetup(Arguments&) { return static_cast<std::int32_t>(m_usePageSetup); }

Value ModelDocExtension::putUsePageSetup(Arguments& arguments)
{
    const std::int32_t value = arguments.integer(0);
    if (value < static_cast<std::int32_t>(PageSetupInUse::OfApplication)
        || value > static_cast<std::int32_t>(PageSetupInUse::OfDocument))
        throw StatusError(zn::E_INVALIDARG, fmt::format("There is no page setup {} to be used; it is 1 to 3.", value));
    m_usePageSetup = static_cast<PageSetupInUse>(value);
    return {};
}

Value ModelDocExtension::printOut2(Arguments& arguments)
{
    PrintRequest request{.sheets = integers(arguments.value(0)),
        .copies = arguments.integer(1),
        .collate = arguments.boolean(2),
        .printer = arguments.text(3),
        .file = arguments.text(4),
        .setup = m_usePageSetup};
    return printDocument(*requireOpen(m_document), request);
}

} // namespace zn::zentrel
