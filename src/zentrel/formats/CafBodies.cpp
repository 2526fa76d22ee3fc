#include "zentrel/formats/CafBodies.h"

#include <algorithm>
#include <BRep_Builder.hxx>
#include <cmath>
#include <Quantity_Color.hxx>
#include <TColStd_HSequenceOfExtendedString.hxx>
#include <TDataStd_Name.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_Color.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace zn::zentrel {

namespace {

/// The kernel keeps colours in single precision, so that a plain 1 comes back as nearly 1.
double rounded(double value) { return std::round(value * 1e6) / 1e6; }

class BodyCollector {
public:
    BodyCollector(const TDF_Label& part, const Handle(TDocStd_Document) & document, const SolidNames& names)
        : m_layers(XCAFDoc_DocumentTool::LayerTool(document->Main()))
        , m_names(names)
        , m_part(part)
    {
    }

    PartConfiguration collect()
    {
        const TopoDS_Shape whole = XCAFDoc_ShapeTool::GetShape(m_part);
        m_configuration.name = u"Default";
        m_configuration.color = colorOf(m_part);
        m_partName = nameOf(m_part);
        readSubShapes();
        for (TopExp_Explorer solids(whole, TopAbs_SOLID); solids.More(); solids.Next())
            addBody(solids.Current());
        addBody(rest(whole, {{TopAbs_SHELL, TopAbs_SOLID}, {TopAbs_FACE, TopAbs_SHELL}}));
        addBody(rest(whole, {{TopAbs_WIRE, TopAbs_FACE}, {TopAbs_EDGE, TopAbs_WIRE}}));
        addBody(rest(whole, {{TopAbs_VERTEX, TopAbs_EDGE}}));
        return std::move(m_configuration);
    }

private:
    template <class Value> using ShapeMap = NCollection_DataMap<TopoDS_Shape, Value, TopTools_ShapeMapHasher>;

    /// Compounds come first and faces last, so that what is nearer to a face wins.
    void readSubShapes()
    {
        TDF_LabelSequence labels;
        XCAFDoc_ShapeTool::GetSubShapes(m_part, labels);
        std::vector<TDF_Label> ordered(labels.begin(), labels.end());
        std::stable_sort(ordered.begin(), ordered.end(), [](const TDF_Label& one, const TDF_Label& other) {
            return XCAFDoc_ShapeTool::GetShape(one).ShapeType() < XCAFDoc_ShapeTool::GetShape(other).ShapeType();
        });
        for (const TDF_Label& label : ordered) {
            const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(label);
            m_labels.Bind(shape, label);
            if (const auto color = colorOf(label))
                paint(shape, *color);
        }
    }

    void paint(const TopoDS_Shape& shape, const Color& color)
    {
        for (TopExp_Explorer solids(shape, TopAbs_SOLID); solids.More(); solids.Next())
            m_bodyColors.Bind(solids.Current(), color);
        for (TopExp_Explorer faces(shape, TopAbs_FACE, TopAbs_SOLID); faces.More(); faces.Next())
            m_faceColors.Bind(faces.Current(), color);
    }

    void addBody(const TopoDS_Shape& shape)
    {
        if (shape.IsNull())
            return;
        Body& body = m_configuration.bodies.emplace_back();
        body.shape = shape;
        const Text* own = m_names.Seek(shape.Located(TopLoc_Location()));
        body.name = own ? *own : m_partName;
        if (const Color* color = m_bodyColors.Seek(shape))
            body.color = *color;
        addLayers(body, shape);
        addFaceColors(body, shape);
    }

    void addLayers(Body& body, const TopoDS_Shape& shape) const
    {
        const TDF_Label* own = m_labels.Seek(shape);
        Handle(TColStd_HSequenceOfExtendedString) layers;
        if (!own || !m_layers->GetLayers(*own, layers) || layers->IsEmpty())
            m_layers->GetLayers(m_part, layers);
        if (layers.IsNull())
            return;
        for (const TCollection_ExtendedString& layer : *layers)
            body.layers.emplace_back(layer.ToExtString());
    }

    void addFaceColors(Body& body, const TopoDS_Shape& shape) const
    {
        if (m_faceColors.IsEmpty())
            return;
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(shape, TopAbs_FACE, faces);
        for (int index = 1; index <= faces.Extent(); ++index) {
            const Color* color = m_faceColors.Seek(faces(index));
            if (color && *color != body.color)
                body.faceColors[index] = *color;
        }
        const bool all = !body.faceColors.empty() && static_cast<int>(body.faceColors.size()) == faces.Extent();
        const auto isFirst = [&](const auto& face) { return face.second == body.faceColors.begin()->second; };
        if (all && std::all_of(body.faceColors.begin(), body.faceColors.end(), isFirst)) {
            body.color = body.faceColors.begin()->second;
            body.faceColors.clear();
        }
    }

    struct Kind {
        TopAbs_ShapeEnum kind;
        TopAbs_ShapeEnum outside;
    };

    /// What of some kinds stands outside higher kinds, as one compound unless it is one shape; null if there is none.
    static TopoDS_Shape rest(const TopoDS_Shape& whole, std::initializer_list<Kind> kinds)
    {
        TopoDS_Compound compound;
        BRep_Builder builder;
        builder.MakeCompound(compound);
        for (const auto& [kind, outside] : kinds)
            for (TopExp_Explorer shapes(whole, kind, outside); shapes.More(); shapes.Next())
                builder.Add(compound, shapes.Current());
        switch (compound.NbChildren()) {
        case 0:
            return {};
        case 1:
            return TopoDS_Iterator(compound).Value();
        default:
            return compound;
        }
    }

    Handle(XCAFDoc_LayerTool) m_layers;
    const SolidNames& m_names;
    TDF_Label m_part;
    Text m_partName;
    ShapeMap<TDF_Label> m_labels;
    ShapeMap<Color> m_bodyColors;
    ShapeMap<Color> m_faceColors;
    PartConfiguration m_configuration;
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

CafDocument::~CafDocument() { XCAFApp_Application::GetApplication()->Close(m_document); }

Text nameOf(const TDF_Label& label)
{
    Handle(TDataStd_Name) name;
    return label.FindAttribute(TDataStd_Name::GetID(), name) ? Text(name->Get().ToExtString()) : Text();
}

std::optional<Color> colorOf(const TDF_Label& label)
{
    for (const XCAFDoc_ColorType type : {XCAFDoc_ColorSurf, XCAFDoc_ColorGen, XCAFDoc_ColorCurv}) {
        TDF_Label color;
        Handle(XCAFDoc_Color) attribute;
        if (!XCAFDoc_ColorTool::GetColor(label, type, color) || !color.FindAttribute(XCAFDoc_Color::GetID(), attribute))
            continue;
        Color result;
        attribute->GetColor().Values(result.red, result.green, result.blue, Quantity_TOC_sRGB);
        return Color{rounded(result.red), rounded(result.green), rounded(result.blue)};
    }
    return {};
}

PartConfiguration configurationOf(
    const TDF_Label& part, const Handle(TDocStd_Document) & document, const SolidNames& names)
{
    return BodyCollector(part, document, names).collect();
}

} // namespace zn::zentrel
