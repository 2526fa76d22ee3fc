#include "zentrel/application/ExportData.h"

namespace zn::zentrel {

const MemberTable& ExportPdfData::members() const
{
    static const Member rows[] = {
        {u"SetSheets", MemberUse::Call, u"Which [Sheets]", member<&ExportPdfData::setSheets>},
    };
    static const MemberTable table(rows);
    return table;
}

Value ExportPdfData::setSheets(Arguments& arguments)
{
    const auto which = static_cast<SheetsToExport>(arguments.integer(0));
    std::vector<Text> sheets = arguments.texts(1);
    const bool known = which == SheetsToExport::All || which == SheetsToExport::Current
        || (which == SheetsToExport::Specified && !sheets.empty());
    if (!known)
        return false;
    m_which = which;
    m_sheets = std::move(sheets);
    return true;
}

const MemberTable& DocumentSpecification::members() const
{
    using Self = DocumentSpecification;
    static const Member rows[] = {
        {u"FileName", MemberUse::Call, u"", member<&Self::get<&Self::fileName>>},
        {u"FileName", MemberUse::Put, u"Value", member<&Self::putText<&Self::fileName>>},
        {u"DocumentType", MemberUse::Call, u"", member<&Self::get<&Self::documentType>>},
        {u"DocumentType", MemberUse::Put, u"Value", member<&Self::putDocumentType>},
        {u"ReadOnly", MemberUse::Call, u"", member<&Self::get<&Self::readOnly>>},
        {u"ReadOnly", MemberUse::Put, u"Value", member<&Self::putBool<&Self::readOnly>>},
        {u"Silent", MemberUse::Call, u"", member<&Self::get<&Self::silent>>},
        {u"Silent", MemberUse::Put, u"Value", member<&Self::putBool<&Self::silent>>},
        {u"ConfigurationName", MemberUse::Call, u"", member<&Self::get<&Self::configurationName>>},
        {u"ConfigurationName", MemberUse::Put, u"Value", member<&Self::putText<&Self::configurationName>>},
        {u"DisplayState", MemberUse::Call, u"", member<&Self::get<&Self::displayState>>},
        {u"DisplayState", MemberUse::Put, u"Value", member<&Self::putText<&Self::displayState>>},
        {u"IgnoreHiddenComponents", MemberUse::Call, u"", member<&Self::get<&Self::ignoreHiddenComponents>>},
        {u"IgnoreHiddenComponents", MemberUse::Put, u"Value", member<&Self::putBool<&Self::ignoreHiddenComponents>>},
        {u"Error", MemberUse::Call, u"", member<&Self::get<&Self::error>>},
        {u"Warning", MemberUse::Call, u"", member<&Self::get<&Self::warning>>},
    };
    static const MemberTable table(rows);
    return table;
}

Value DocumentSpecification::putDocumentType(Arguments& arguments)
{
    documentType = arguments.integer(0);
    return {};
}

const MemberTable& Mbd3DPdfData::members() const
{
    static const Member rows[] = {
        {u"FilePath", MemberUse::Call, u"", member<&Mbd3DPdfData::getFilePath>},
        {u"FilePath", MemberUse::Put, u"Value", member<&Mbd3DPdfData::putFilePath>},
        {u"ThemeName", MemberUse::Call, u"", member<&Mbd3DPdfData::getThemeName>},
        {u"ThemeName", MemberUse::Put, u"Value", member<&Mbd3DPdfData::putThemeName>},
        {u"ViewPdfAfterSaving", MemberUse::Call, u"", member<&Mbd3DPdfData::getViewAfterSaving>},
        {u"ViewPdfAfterSaving", MemberUse::Put, u"Value", member<&Mbd3DPdfData::putViewAfterSaving>},
        {u"SetStandardViews", MemberUse::Call, u"Views", member<&Mbd3DPdfData::setStandardViews>},
        {u"SetMoreViews", MemberUse::Call, u"Names", member<&Mbd3DPdfData::setMoreViews>},
        {u"GetTextAndCustomProperties", MemberUse::Call, u"", member<&Mbd3DPdfData::getTextAndCustomProperties>},
    };
    static const MemberTable table(rows);
    return table;
}

Value Mbd3DPdfData::getFilePath(Arguments&) { return m_filePath; }

Value Mbd3DPdfData::putFilePath(Arguments& arguments)
{
    m_filePath = arguments.text(0);
    return {};
}

Value Mbd3DPdfData::getThemeName(Arguments&) { return m_themeName; }

Value Mbd3DPdfData::putThemeName(Arguments& arguments)
{
    m_themeName = arguments.text(0);
    return {};
}

Value Mbd3DPdfData::getViewAfterSaving(Arguments&) { return m_viewAfterSaving; }

Value Mbd3DPdfData::putViewAfterSaving(Arguments& arguments)
{
    m_viewAfterSaving = arguments.boolean(0);
    return {};
}

Value Mbd3DPdfData::setStandardViews(Arguments& arguments)
{
    m_standardViews = arguments.value(0).deepCopy();
    return true;
}

Value Mbd3DPdfData::setMoreViews(Arguments& arguments)
{
    m_moreViews = arguments.value(0).deepCopy();
    return true;
}

/// A document has none of the texts that a theme asks for.
Value Mbd3DPdfData::getTextAndCustomProperties(Arguments&) { return Value::arrayOf({}); }

} // namespace zn::zentrel
