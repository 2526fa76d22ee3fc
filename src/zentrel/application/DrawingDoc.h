#pragma once

#include "zentrel/application/ModelDoc.h"

namespace zn::zentrel {

/// "DrawingDoc"
class DrawingDoc : public ModelDoc {
public:
    DrawingDoc(Application& application, Identity identity, DrawingDocument drawing)
        : ModelDoc(application, std::move(identity))
        , m_drawing(std::move(drawing))
    {
    }

    Text typeName() const override { return u"DrawingDoc"; }
    DocumentKind kind() const override { return DocumentKind::Drawing; }
    Document record() const override { return m_drawing; }
    /// A drawing has sheets, no configurations.
    std::vector<Text> configurationNames() const override { return {}; }
    Text activeConfiguration() const override { return {}; }
    bool showConfiguration(const Text&) override { return false; }

    const DrawingDocument& drawing() const { return m_drawing; }
    /// Makes the sheet at that place the current one.
    void showSheet(std::size_t index) { m_drawing.active = index; }

protected:
    Text eventInterface() const override { return u"DrawingDocEvents"; }
    const MemberTable& members() const override;

private:
    Value getSheetNames(Arguments&);
    Value getSheetCount(Arguments&);
    Value activateSheet(Arguments& arguments);
    Value getCurrentSheet(Arguments&);
    Value getSheet(Arguments& arguments);
    Value getViews(Arguments&);

    DrawingDocument m_drawing;
};

/// "Sheet" of a drawing, as of the moment when it was asked for.
class SheetObject : public ScriptObject {
public:
    explicit SheetObject(Sheet sheet)
        : m_sheet(std::move(sheet))
    {
    }
    Text typeName() const override { return u"Sheet"; }

protected:
    const MemberTable& members() const override;

private:
    Value getName(Arguments&);
    Value getProperties(Arguments&);

    Sheet m_sheet;
};

/// "View": one projection on a sheet.
class DrawingView : public ScriptObject {
public:
    explicit DrawingView(View view)
        : m_view(std::move(view))
    {
    }
    Text typeName() const override { return u"View"; }

protected:
    const MemberTable& members() const override;

private:
    Value getName(Arguments&);
    Value getMembers(Arguments&);
    Value referencedConfiguration(Arguments&);

    View m_view;
};

} // namespace zn::zentrel
