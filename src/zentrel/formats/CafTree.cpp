#include "zentrel/formats/CafTree.h"

#include <set>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace zn::zentrel {

namespace {

class TreeReader {
public:
    TreeReader(const Handle(TDocStd_Document) & document, const SolidNames& names)
        : m_document(document)
        , m_names(names)
    {
    }

    Document read()
    {
        TDF_LabelSequence roots;
        XCAFDoc_DocumentTool::ShapeTool(m_document->Main())->GetFreeShapes(roots);
        const bool isAssembly = std::any_of(roots.begin(), roots.end(),
            [](const TDF_Label& root) { return XCAFDoc_ShapeTool::IsAssembly(prototypeOf(root)); });
        if (!isAssembly)
            return partOf(roots);
        if (roots.Length() == 1 && XCAFDoc_ShapeTool::IsAssembly(roots.First()))
            return assemblyOf(roots.First());
        return assemblyOf(roots);
    }

private:
    static TDF_Label prototypeOf(const TDF_Label& label)
    {
        TDF_Label prototype = label;
        if (XCAFDoc_ShapeTool::IsReference(label))
            XCAFDoc_ShapeTool::GetReferredShape(label, prototype);
        return prototype;
    }

    /// Nothing places these parts but the file, so each body gets the colour that it shows.
    PartDocument partOf(const TDF_LabelSequence& roots)
    {
        PartDocument part;
        PartConfiguration& all = part.configurations.emplace_back();
        all.name = u"Default";
        for (const TDF_Label& root : roots) {
            const TDF_Label prototype = prototypeOf(root);
            PartConfiguration one = configurationOf(prototype, m_document, m_names);
            const auto given = root == prototype ? std::nullopt : colorOf(root);
            for (Body& body : one.bodies) {
                if (!body.color)
                    body.color = given ? given : one.color;
                if (root != prototype)
                    body.shape = body.shape.shape().Moved(XCAFDoc_ShapeTool::GetLocation(root));
                all.bodies.push_back(std::move(body));
            }
        }
        if (roots.Length() == 1)
            part.name = nameOf(prototypeOf(roots.First()));
        return part;
    }

    AssemblyDocument assemblyOf(const TDF_Label& label)
    {
        TDF_LabelSequence components;
        XCAFDoc_ShapeTool::GetComponents(label, components);
        AssemblyDocument assembly = assemblyOf(components);
        assembly.name = nameOf(label);
        return assembly;
    }

    AssemblyDocument assemblyOf(const TDF_LabelSequence& labels)
    {
        AssemblyDocument assembly;
        for (const TDF_Label& label : labels) {
            const TDF_Label prototype = prototypeOf(label);
            Component& component = assembly.components.emplace_back();
            component.embedded = documentOf(prototype);
            if (!component.embedded) {
                assembly.components.pop_back();
                continue;
            }
            component.name = componentName(label, prototype, assembly.components.size());
            component.placement = XCAFDoc_ShapeTool::GetLocation(label).Transformation();
            component.color = label == prototype ? std::nullopt : colorOf(label);
            if (!component.color && XCAFDoc_ShapeTool::IsAssembly(prototype))
                component.color = colorOf(prototype);
        }
        AssemblyConfiguration& configuration = assembly.configurations.emplace_back();
        configuration.name = u"Default";
        configuration.states.resize(assembly.components.size());
        return assembly;
    }

    static Text componentName(const TDF_Label& component, const TDF_Label& prototype, std::size_t number)
    {
        if (Text own = nameOf(component); !own.empty())
            return own;
        const Text name = nameOf(prototype);
        return (name.empty() ? Text(u"Component") : name) + u"-" + zn::numberText(static_cast<int>(number));
    }

    /// Null for a product without geometry, such as a folder or a document that is only named.
    std::shared_ptr<const VirtualDocument> documentOf(const TDF_Label& prototype)
    {
        if (const auto* known = m_documents.Seek(prototype))
            return *known;
        auto document = std::make_shared<VirtualDocument>();
        bool isEmpty = false;
        if (XCAFDoc_ShapeTool::IsAssembly(prototype)) {
            AssemblyDocument assembly = assemblyOf(prototype);
            isEmpty = assembly.components.empty();
            document->content = std::move(assembly);
        } else {
            PartDocument part;
            part.name = nameOf(prototype);
            part.configurations.push_back(configurationOf(prototype, m_document, m_names));
            isEmpty = part.configurations.front().bodies.empty();
            document->content = std::move(part);
        }
        if (isEmpty)
            document.reset();
        m_documents.Bind(prototype, document);
        return document;
    }

    Handle(TDocStd_Document) m_document;
    const SolidNames& m_names;
    NCollection_DataMap<TDF_Label, std::shared_ptr<const VirtualDocument>, TDF_LabelMapHasher> m_documents;
};

void collect(const PartDocument& part, std::vector<Body>& bodies)
{
    for (const PartConfiguration& configuration : part.configurations)
        for (const Body& body : configuration.bodies)
            bodies.push_back(body);
}

void collect(const AssemblyDocument& assembly, std::set<const VirtualDocument*>& known, std::vector<Body>& bodies)
{
    for (const Component& component : assembly.components) {
        if (!component.isVirtual() || !known.insert(component.embedded.get()).second)
            continue;
        if (const PartDocument* part = component.embedded->part())
            collect(*part, bodies);
        else
            collect(*component.embedded->assembly(), known, bodies);
    }
}

} // namespace

Document documentOf(const Handle(TDocStd_Document) & document, const SolidNames& names)
{
    return TreeReader(document, names).read();
}

std::vector<Body> distinctBodies(const Document& document)
{
    std::vector<Body> bodies;
    std::set<const VirtualDocument*> known;
    if (const auto* part = std::get_if<PartDocument>(&document))
        collect(*part, bodies);
    else if (const auto* assembly = std::get_if<AssemblyDocument>(&document))
        collect(*assembly, known, bodies);
    return bodies;
}

} // namespace zn::zentrel
