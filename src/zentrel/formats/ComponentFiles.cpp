#include "zentrel/formats/Write.h"

#include <algorithm>

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

void collect(const Model& model, const std::string& prefix, const gp_Trsf& placement,
    const std::filesystem::path& target, std::vector<ModelFile>& files)
{
    for (const Model::Child& child : model.children) {
        const std::string stem = prefix + " - " + fileNamePart(child.name);
        const gp_Trsf whole = placement * child.placement;
        if (!child.model->bodies.empty()) {
            auto placed = std::make_shared<Model>();
            placed->name = child.name;
            placed->children.push_back({child.name, whole, child.model});
            files.push_back({target.parent_path() / (stem + target.extension().string()), std::move(placed)});
        }
        collect(*child.model, stem, whole, target, files);
    }
}

} // namespace

std::vector<ModelFile> componentFiles(const ModelRef& model, const std::filesystem::path& target)
{
    std::vector<ModelFile> files;
    collect(*model, target.stem().string(), gp_Trsf(), target, files);
    if (files.empty())
        files.push_back({target, model});
    return files;
}

} // namespace zn::zentrel
