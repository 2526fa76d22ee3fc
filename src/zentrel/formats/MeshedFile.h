#pragma once

#include "zentrel/formats/CafModel.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/kernel/Remarks.h"
#include "zentrel/model/Packets.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace zn::zentrel {

/// What a process of the kernel's is told: the options' bytes, the file's path with its length, the model.
template <class Options>
std::string meshRequest(const Model& model, const std::filesystem::path& file, const Options& options)
{
    static_assert(std::is_trivially_copyable_v<Options>);
    const std::string path = file.string();
    const std::size_t length = path.size();
    std::string request(reinterpret_cast<const char*>(&options), sizeof options);
    request.append(reinterpret_cast<const char*>(&length), sizeof length);
    return request + path + packModel(model);
}

template <class Options, auto make> std::string answerMeshRequest(std::string_view request)
{
    Options options;
    std::size_t length = 0;
    std::memcpy(&options, request.data(), sizeof options);
    std::memcpy(&length, request.data() + sizeof options, sizeof length);
    request.remove_prefix(sizeof options + sizeof length);
    Remarks remarks;
    std::string bytes = make(*unpackModel(request.substr(length)), request.substr(0, length), options, remarks);
    return withRemarks(std::move(bytes), remarks);
}

/// A file of triangles with its remarks: what `make(model, file, options, remarks)` returns and tells in a process of
/// the kernel's. Sound models take turns
/// in one that stays, any other one gets its own. Raises what `make` raises, and `Kernel`.
template <auto make, class Options>
std::string meshedFile(const Model& model, const std::filesystem::path& file, const Options& options)
{
    const KernelTask task{"meshing the model for", file, computingLimit(countFaces(model))};
    const auto bodies = placedBodies(model);
    if (std::all_of(bodies.begin(), bodies.end(), [](const PlacedBody& placed) { return placed.body->sound; }))
        return askKernel(task, answerMeshRequest<Options, make>, meshRequest(model, file, options));
    return runInChild(task, [&] {
        Remarks remarks;
        std::string bytes = make(model, file, options, remarks);
        return withRemarks(std::move(bytes), remarks);
    });
}

} // namespace zn::zentrel
