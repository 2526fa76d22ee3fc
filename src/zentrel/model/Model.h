#pragma once

#include "zentrel/model/Container.h"

#include <tuple>

namespace zn::zentrel {

/// What an export or a view sees of a part or an assembly in one configuration: bodies, and placed models below.
/// Equal components share one `Model`.
struct Model {
    struct Child {
        Text name;
        gp_Trsf placement;
        std::shared_ptr<const Model> model;
        /// Of all bodies below that have no colour nearer to them.
        std::optional<Color> color = {};
        bool isInside = false; ///< it stands in the same file as the model
    };
    Text name;
    std::vector<Body> bodies;
    std::vector<Child> children;
    /// Of bodies without a colour of their own, unless the child that places the model has one.
    std::optional<Color> color = {};
};

using ModelRef = std::shared_ptr<const Model>;

/// Turns documents into models and keeps what it has read: a part that stands in an assembly ten times is read once.
/// A model with more than a million placed bodies or ten million faces is refused (`Unsupported`): few assemblies that
/// hold each other twice can make up any number.
/// One loader serves one operation; it doesn't see later changes of files.
class ModelLoader {
public:
    /// Reads a part or an assembly with all its components. The empty configuration is the active one.
    /// Suppressed and hidden components are left out. Raises what `readDocument` raises, `InvalidArgument` for an
    /// unknown configuration, and `Damaged` for an assembly that contains itself.
    ModelRef load(const std::filesystem::path& file, const Text& configuration = {});

    /// The same for documents that are in memory; `file` is the document's path, for names and sentences.
    ModelRef load(const PartDocument& part, const std::filesystem::path& file, const Text& configuration = {});
    ModelRef load(const AssemblyDocument& assembly, const std::filesystem::path& file, const Text& configuration = {});

private:
    const Document& document(const std::filesystem::path& file);
    ModelRef assemblyModel(const AssemblyDocument& assembly, const std::filesystem::path& file, const Text& name,
        const Text& configuration);
    ModelRef childModel(const Component& component, const ComponentState& state, const std::filesystem::path& assembly);

    std::map<std::filesystem::path, Document> m_documents;
    std::map<std::pair<std::filesystem::path, Text>, ModelRef> m_models;
    /// Those of virtual components, by document, configuration and the name of one that its document doesn't name.
    /// Their documents are kept, so that no other one gets their address.
    using VirtualKey = std::tuple<std::shared_ptr<const VirtualDocument>, Text, Text>;
    std::map<VirtualKey, ModelRef> m_virtual;
    std::vector<std::filesystem::path> m_open; ///< the assemblies being loaded, outermost first
};

/// One shape of all bodies, placed; equal components share their geometry. Null if there are no bodies.
TopoDS_Shape compoundOf(const Model& model);

/// All bodies with the placement each has in the whole, depth first.
struct PlacedBody {
    const Body* body = nullptr; ///< lives as long as the model
    gp_Trsf placement;
    std::optional<Color> color; ///< of faces without one of their own
};
std::vector<PlacedBody> placedBodies(const Model& model);

} // namespace zn::zentrel
