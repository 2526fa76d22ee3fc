#include "zentrel/application/DrawingDoc.h"

#include "zentrel/application/FindByName.h"

namespace zn::zentrel {

namespace {

/// The number of a sheet's format, lying and standing. The standing form has a number of its own for A and A4 only.
struct SheetFormat {
    PaperSize paper;
    std::int32_t landscape;
    std::int32_t portrait;
};
constexpr SheetFormat sheetFormats[] = {
    {PaperSize::A, 0, 1},
    {PaperSize::B, 2, 2},
    {PaperSize::C, 3, 3},
    {PaperSize::D, 4, 4},
    {PaperSize::E, 5, 5},
    {PaperSize::A4, 6, 7},
    {PaperSize::A3, 8, 8},
    {PaperSize::A2, 9, 9},
    {PaperSize::A1, 10, 10},
    {PaperSize::A0, 11, 11},
};

double formatNumber(const Sheet& sheet)
{
    for (const SheetFormat& format : sheetFormats)
        if (format.paper == sheet.paper)
            return sheet.landscape ? format.landscape : format.portrait;
    throw StatusError(zn::E_UNEXPECTED, "A sheet has an unknown paper.");
}

} // namespace

const MemberTable& DrawingDoc::members() const
{
    static const Member rows[] = {
        {u"GetSheetNames", MemberUse::Call, u"", member<&DrawingDoc::getSheetNames>},
        {u"GetSheetCount", MemberUse::Call, u"", member<&DrawingDoc::getSheetCount>},
        {u"ActivateSheet", MemberUse::Call, u"Name", member<&DrawingDoc::activateSheet>},
        {u"GetCurrentSheet", MemberUse::Call, u"", member<&DrawingDoc::getCurrentSheet>},
        {u"Sheet", MemberUse::Call, u"Name", member<&DrawingDoc::getSheet>},
        {u"GetViews", MemberUse::Call, u"", member<&DrawingDoc::getViews>},
    };
    static const MemberTable table(rows, &modelMembers());
    return table;
}

Value DrawingDoc::getSheetNames(Arguments&)
{
    application();
    return textArray(namesOf(m_drawing.sheets));
}

Value DrawingDoc::getSheetCount(Arguments&)
{
    application();
    return static_cast<std::int32_t>(m_drawing.sheets.size());
}

Value DrawingDoc::activateSheet(Arguments& arguments)
{
    application();
    return activateByName(m_drawing.sheets, arguments.text(0), m_drawing.active);
}

Value DrawingDoc::getCurrentSheet(Arguments&)
{
    application();
    return std::make_shared<SheetObject>(m_drawing.sheets[m_drawing.active]);
}

Value DrawingDoc::getSheet(Arguments& arguments)
{
    application();
    std::size_t index = 0;
    if (!activateByName(m_drawing.sheets, arguments.text(0), index))
        return ObjectRef();
    return std::make_shared<SheetObject>(m_drawing.sheets[index]);
}

/// One list of views for each sheet.
Value DrawingDoc::getViews(Arguments&)
{
    application();
    std::vector<Value> sheets;
    for (const Sheet& sheet : m_drawing.sheets) {
        std::vector<Value> views;
        for (const View& view : sheet.views)
            views.emplace_back(std::make_shared<DrawingView>(view));
        sheets.push_back(Value::arrayOf(std::move(views)));
    }
    return Value::arrayOf(std::move(sheets));
}

const MemberTable& SheetObject::members() const
{
    static const Member rows[] = {
        {u"GetName", MemberUse::Call, u"", member<&SheetObject::getName>},
        {u"GetProperties", MemberUse::Call, u"", member<&SheetObject::getProperties>},
    };
    static const MemberTable table(rows);
    return table;
}

Value SheetObject::getName(Arguments&) { return m_sheet.name; }

/// Format number, template number (none), scale as numerator and denominator, first-angle projection, and width and
/// height in metres.
Value SheetObject::getProperties(Arguments&)
{
    const auto [width, height] = m_sheet.size();
    const double numerator = m_sheet.scale >= 1.0 ? m_sheet.scale : 1.0;
    const double denominator = m_sheet.scale >= 1.0 ? 1.0 : 1.0 / m_sheet.scale;
    return Value::arrayOf({formatNumber(m_sheet), 0.0, numerator, denominator, 1.0, width / 1000.0, height / 1000.0});
}

const MemberTable& DrawingView::members() const
{
    static const Member rows[] = {
        {u"GetName2", MemberUse::Call, u"", member<&DrawingView::getName>},
        {u"Name", MemberUse::Call, u"", member<&DrawingView::getName>},
        {u"GetMembers", MemberUse::Call, u"", member<&DrawingView::getMembers>},
        {u"ReferencedConfiguration", MemberUse::Call, u"", member<&DrawingView::referencedConfiguration>},
    };
    static const MemberTable table(rows);
    return table;
}

Value DrawingView::getName(Arguments&) { return m_view.name; }

/// Views here show a model only; notes and other members don't exist.
Value DrawingView::getMembers(Arguments&) { return Value::arrayOf({}); }

Value DrawingView::referencedConfiguration(Arguments&) { return m_view.configuration; }

} // namespace zn::zentrel
