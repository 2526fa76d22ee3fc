#include "zentrel/formats/CafModel.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafBodies.h"

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Quantity_Color.hxx>
#include <TCollection_ExtendedString.hxx>
#include <TDataStd_Name.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace zn::zentrel {

namespace {

/// A body as it is written.
struct Written {
    const Body* body;
    TopoDS_Shape shape;
    std::optional<Color> color; ///< of faces without one of their own
};

TopoDS_Compound compoundOfShapes(const std::vector<Written>& bodies)
{
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    for (const Written& body : bodies)
        builder.Add(compound, body.shape);
    return compound;
}

class DocumentBuilder {
public:
    explicit DocumentBuilder(const BodyFilter& filter)
        : m_document(newCafDocument())
        , m_shapes(XCAFDoc_DocumentTool::ShapeTool(m_document->Main()))
        , m_colors(XCAFDoc_DocumentTool::ColorTool(m_document->Main()))
        , m_layers(XCAFDoc_DocumentTool::LayerTool(m_document->Main()))
        , m_filter(filter)
    {
    }

    Handle(TDocStd_Document) build(const Model& model, bool flatten)
    {
        const TDF_Label label = flatten ? addFlat(model) : add(model);
        if (label.IsNull())
            return {};
        m_shapes->UpdateAssemblies();
        return m_document;
    }

private:
    TDF_Label addFlat(const Model& model)
    {
        std::vector<Written> written;
        for (const PlacedBody& placed : placedBodies(model)) {
            const TopoDS_Shape shape = m_filter(*placed.body);
            if (!shape.IsNull())
                written.push_back({placed.body, shape.Moved(TopLoc_Location(placed.placement)), placed.color});
        }
        return addPart(written, model.name, {});
    }

    /// The label of the model, null if nothing of it is written.
    TDF_Label add(const Model& model)
    {
        if (const auto known = m_labels.find(&model); known != m_labels.end())
            return known->second;
        std::vector<Written> written;
        for (const Body& body : model.bodies) {
            const TopoDS_Shape shape = m_filter(body);
            if (!shape.IsNull())
                written.push_back({&body, shape, body.color});
        }
        TDF_Label label = addPart(written, model.name, model.color);
        if (label.IsNull() && !model.children.empty())
            label = addAssembly(model);
        m_labels.emplace(&model, label);
        return label;
    }

    TDF_Label addAssembly(const Model& model)
    {
        std::vector<std::pair<TDF_Label, const Model::Child*>> children;
        for (const Model::Child& child : model.children) {
            const TDF_Label label = add(*child.model);
            if (!label.IsNull())
                children.emplace_back(label, &child);
        }
        if (children.empty())
            return {};
        const TDF_Label label = m_shapes->NewShape();
        setName(label, model.name);
        for (const auto& [part, child] : children) {
            const TDF_Label component = m_shapes->AddComponent(label, part, TopLoc_Location(child->placement));
            setName(component, child->name);
            // On the label of a part that is one body, a component's colour would win over the body's own.
            if (child->color && !isOneColoredBody(*child->model))
                setColor(component, *child->color);
        }
        return label;
    }

    static bool isOneColoredBody(const Model& model)
    {
        return model.children.empty() && model.bodies.size() == 1 && model.bodies.front().color;
    }

    TDF_Label addPart(const std::vector<Written>& written, const Text& name, const std::optional<Color>& color)
    {
        if (written.empty())
            return {};
        // A shape with a location of its own would be taken for a component, so only a plain one stands for itself.
        const bool alone = written.size() == 1 && written.front().shape.Location().IsIdentity();
        const TopoDS_Shape whole = alone ? written.front().shape : TopoDS_Shape(compoundOfShapes(written));
        const TDF_Label label = m_shapes->AddShape(whole, Standard_False);
        setName(label, name);
        if (color)
            setColor(label, *color);
        for (const Written& body : written) {
            const TDF_Label own = alone ? label : m_shapes->AddSubShape(label, body.shape);
            if (!alone)
                setName(own, body.body->name);
            if (body.color)
                setColor(own, *body.color);
            for (const Text& layer : body.body->layers)
                m_layers->SetLayer(own, TCollection_ExtendedString(layer.c_str()));
            setFaceColors(label, body);
        }
        return label;
    }

    void setFaceColors(const TDF_Label& part, const Written& body)
    {
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(body.shape, TopAbs_FACE, faces);
        for (const auto& [face, color] : body.body->faceColors) {
            if (face >= 1 && face <= faces.Extent())
                setColor(m_shapes->AddSubShape(part, faces(face)), color);
        }
    }

    static void setName(const TDF_Label& label, const Text& name)
    {
        if (!name.empty())
            TDataStd_Name::Set(label, TCollection_ExtendedString(name.c_str()));
    }

    void setColor(const TDF_Label& label, const Color& color)
    {
        const Quantity_Color value(color.red, color.green, color.blue, Quantity_TOC_sRGB);
        m_colors->SetColor(label, value, XCAFDoc_ColorGen);
    }

    Handle(TDocStd_Document) m_document;
    Handle(XCAFDoc_ShapeTool) m_shapes;
    Handle(XCAFDoc_ColorTool) m_colors;
    Handle(XCAFDoc_LayerTool) m_layers;
    const BodyFilter& m_filter;
    std::map<const Model*, TDF_Label> m_labels;
};

} // namespace

Handle(TDocStd_Document) cafDocumentOf(const Model& model, const BodyFilter& filter, bool flatten)
{
    return DocumentBuilder(filter).build(model, flatten);
}

TopoDS_Shape edgesOf(const TopoDS_Shape& shape)
{
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(shape, TopAbs_EDGE, edges);
    TopoDS_Compound compound;
    BRep_Builder builder;
    for (int index = 1; index <= edges.Extent(); ++index) {
        // The pole of a sphere is an edge without a curve.
        if (BRep_Tool::Degenerated(TopoDS::Edge(edges(index))))
            continue;
        if (compound.IsNull())
            builder.MakeCompound(compound);
        builder.Add(compound, edges(index));
    }
    return compound;
}

std::size_t countFaces(const Model& model)
{
    std::size_t count = 0;
    for (const PlacedBody& placed : placedBodies(model))
        count += placed.body->shape.facts().faces;
    return count;
}

void requireSurfaces(const Model& model, const char* format, const std::filesystem::path& file)
{
    for (const PlacedBody& placed : placedBodies(model)) {
        if (!placed.body->shape.facts().hasSurfaces)
            throw DocumentError(ErrorKind::Unsupported,
                "The file " + quoted(file) + " can't be written: the body '" + zn::toUtf8(placed.body->name)
                    + "' is only a tessellation, which " + format + " can't hold; STL and VRML can.");
    }
}

} // namespace zn::zentrel
