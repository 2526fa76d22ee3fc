#include "zentrel/formats/CafBodies.h"

#include <BRep_Builder.hxx>
#include <cmath>
#include <Quantity_Color.hxx>
#include <TDataStd_Name.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <TopTools_DataMapOfShapeInteger.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace zn::zentrel {

namespace {

class BodyCollector {
public:
    BodyCollector(const Handle(TDocStd_Document) & document, const SolidNames& names)
        : m_shapes(XCAFDoc_DocumentTool::ShapeTool(document->Main()))
        , m_colors(XCAFDoc_DocumentTool::ColorTool(document->Main()))
        , m_names(names)
    {
    }

    std::vector<Body> collect()
    {
        TDF_LabelSequence roots;
        m_shapes->GetFreeShapes(roots);
        for (const TDF_Label& root : roots)
            visit(root, TopLoc_Location(), {});
        return std::move(m_bodies);
    }

private:
    /// `color` is what an instance above gives to all below it.
    void visit(const TDF_Label& label, const TopLoc_Location& placement, const std::optional<Color>& color)
    {
        TDF_Label prototype = label;
        TopLoc_Location location = placement;
        std::optional<Color> given = color;
        if (XCAFDoc_ShapeTool::IsReference(label)) {
            XCAFDoc_ShapeTool::GetReferredShape(label, prototype);
            location = placement * XCAFDoc_ShapeTool::GetLocation(label);
            if (!given)
                given = colorOf(label);
        }
        if (!XCAFDoc_ShapeTool::IsAssembly(prototype)) {
            addBodies(prototype, location, given);
            return;
        }
        if (!given)
            given = colorOf(prototype);
        TDF_LabelSequence components;
        XCAFDoc_ShapeTool::GetComponents(prototype, components);
        for (const TDF_Label& component : components)
            visit(component, location, given);
    }

    void addBodies(const TDF_Label& label, const TopLoc_Location& location, const std::optional<Color>& given)
    {
        const TopoDS_Shape whole = XCAFDoc_ShapeTool::GetShape(label);
        const Text name = nameOf(label);
        const std::optional<Color> color = given ? given : colorOf(label);
        readSubShapes(label);
        for (TopExp_Explorer solids(whole, TopAbs_SOLID); solids.More(); solids.Next())
            addBody(solids.Current(), location, name, color);
        addBody(rest(whole, TopAbs_FACE, TopAbs_SOLID), location, name, color);
        addBody(rest(whole, TopAbs_EDGE, TopAbs_FACE), location, name, color);
        addBody(rest(whole, TopAbs_VERTEX, TopAbs_EDGE), location, name, color);
    }

    void addBody(
        const TopoDS_Shape& shape, const TopLoc_Location& location, const Text& name, const std::optional<Color>& color)
    {
        if (shape.IsNull())
            return;
        Body& body = m_bodies.emplace_back();
        body.shape = shape.Moved(location);
        body.sound = isSound(shape);
        const TDF_Label* label = subShape(shape);
        const Text* own = m_names.Seek(shape.Located(TopLoc_Location()));
        body.name = own ? *own : name;
        body.color = color;
        if (label) {
            if (const auto special = colorOf(*label))
                body.color = special;
        }
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(shape, TopAbs_FACE, faces);
        for (int index = 1; index <= faces.Extent(); ++index) {
            const TDF_Label* face = subShape(faces(index));
            const auto special = face ? colorOf(*face) : std::nullopt;
            if (special && special != body.color)
                body.faceColors[index] = *special;
        }
    }

    /// What of a kind stands outside a higher kind, as one compound; null if there is none.
    static TopoDS_Shape rest(const TopoDS_Shape& whole, TopAbs_ShapeEnum kind, TopAbs_ShapeEnum avoided)
    {
        TopoDS_Compound compound;
        BRep_Builder builder;
        for (TopExp_Explorer shapes(whole, kind, avoided); shapes.More(); shapes.Next()) {
            if (compound.IsNull())
                builder.MakeCompound(compound);
            builder.Add(compound, shapes.Current());
        }
        return compound;
    }

    void readSubShapes(const TDF_Label& label)
    {
        m_subShapes.Clear();
        m_subLabels.Clear();
        XCAFDoc_ShapeTool::GetSubShapes(label, m_subLabels);
        for (int index = 1; index <= m_subLabels.Length(); ++index)
            m_subShapes.Bind(XCAFDoc_ShapeTool::GetShape(m_subLabels(index)), index);
    }

    const TDF_Label* subShape(const TopoDS_Shape& shape) const
    {
        const int* index = m_subShapes.Seek(shape);
        return index ? &m_subLabels.Value(*index) : nullptr;
    }

    static Text nameOf(const TDF_Label& label)
    {
        Handle(TDataStd_Name) name;
        return label.FindAttribute(TDataStd_Name::GetID(), name) ? Text(name->Get().ToExtString()) : Text();
    }

    std::optional<Color> colorOf(const TDF_Label& label) const
    {
        for (const XCAFDoc_ColorType type : {XCAFDoc_ColorSurf, XCAFDoc_ColorGen, XCAFDoc_ColorCurv}) {
            Quantity_Color color;
            if (!m_colors->GetColor(label, type, color))
                continue;
            Color result;
            color.Values(result.red, result.green, result.blue, Quantity_TOC_sRGB);
            return Color{rounded(result.red), rounded(result.green), rounded(result.blue)};
        }
        return {};
    }

    /// The kernel keeps colours in single precision, so that a plain 1 comes back as nearly 1.
    static double rounded(double value) { return std::round(value * 1e6) / 1e6; }

    Handle(XCAFDoc_ShapeTool) m_shapes;
    Handle(XCAFDoc_ColorTool) m_colors;
    const SolidNames& m_names;
    TopTools_DataMapOfShapeInteger m_subShapes;
    TDF_LabelSequence m_subLabels;
    std::vector<Body> m_bodies;
};

} // namespace

Handle(TDocStd_Document) newCafDocument()
{
    // Else shapes without a name get the kernel's words for their kinds ("SOLID").
    XCAFDoc_ShapeTool::SetAutoNaming(Standard_False);
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    return document;
}

std::vector<Body> bodiesOf(const Handle(TDocStd_Document) & document, const SolidNames& names)
{
    return BodyCollector(document, names).collect();
}

} // namespace zn::zentrel
