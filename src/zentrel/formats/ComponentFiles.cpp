#include "zentrel/formats/Write.h"

#include <algorithm>
#include <set>

namespace zn::zentrel {

namespace {

/// A component's name as a part of a file name.
std::string fileNamePart(const Text& name)
{
    std::string part = zn::toUtf8(name);
    std::replace_if(
        part.begin(), part.end(), [](char c) { return c == '/' || c == '\\'; }, '_');
    return part;
}

class Collector {
public:
    explicit Collector(const std::filesystem::path& target)
        : m_target(target)
    {
    }

    void collect(
        const Model& model, const std::string& prefix, const gp_Trsf& placement, const std::optional<Color>& inherited)
    {
        for (const Model::Child& child : model.children) {
            const std::string stem = unique(prefix + " - " + fileNamePart(child.name));
            const gp_Trsf whole = placement * child.placement;
            const std::optional<Color> color = child.color ? child.color
                : child.model->color                       ? std::nullopt
                                                           : inherited;
            if (!child.model->bodies.empty()) {
                auto placed = std::make_shared<Model>();
                placed->name = child.name;
                placed->children.push_back({child.name, whole, child.model, color, child.isInside});
                files.push_back({m_target.parent_path() / (stem + m_target.extension().string()), std::move(placed)});
            }
            collect(*child.model, stem, whole,
                child.color              ? child.color
                    : child.model->color ? child.model->color
                                         : inherited);
        }
    }

    std::vector<ModelFile> files;

private:
    /// Components of one name get numbers, and so files of their own.
    std::string unique(const std::string& stem)
    {
        std::string result = stem;
        for (int number = 2; !m_stems.insert(zn::foldCase(zn::toText(result))).second; ++number)
            result = stem + " (" + std::to_string(number) + ")";
        return result;
    }

    const std::filesystem::path& m_target;
    std::set<Text> m_stems;
};

} // namespace

std::vector<ModelFile> componentFiles(const ModelRef& model, const std::filesystem::path& target)
{
    Collector collector(target);
    collector.collect(*model, target.stem().string(), gp_Trsf(), model->color);
    if (collector.files.empty())
        collector.files.push_back({target, model});
    return std::move(collector.files);
}

} // namespace zn::zentrel
