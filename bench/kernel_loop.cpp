// The bare kernel over part files: read, mesh with the exporter's own parameters, write a binary STL. One process,
// nothing else. Usage: kernel_loop OUTPUT_FOLDER PART...; prints the seconds that the loop took.

#include "zentrel/formats/Mesh.h"
#include "zentrel/model/Container.h"

#include <BRep_Builder.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <StlAPI_Writer.hxx>
#include <TopoDS_Compound.hxx>

namespace {

TopoDS_Compound shapeOf(const zn::zentrel::PartDocument& part)
{
    BRep_Builder builder;
    TopoDS_Compound compound;
    builder.MakeCompound(compound);
    for (const auto& body : part.configurations.at(part.active).bodies)
        builder.Add(compound, body.shape);
    return compound;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "kernel_loop: name an output folder and part files\n");
        return 2;
    }
    const std::filesystem::path output = argv[1];
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 2; i < argc; ++i) {
        const std::filesystem::path file = argv[i];
        const TopoDS_Compound shape = shapeOf(zn::zentrel::readPart(file));
        BRepMesh_IncrementalMesh(shape, zn::zentrel::meshParameters(shape, zn::zentrel::MeshQuality::Coarse));
        StlAPI_Writer writer;
        writer.ASCIIMode() = Standard_False;
        if (!writer.Write(shape, (output / file.stem()).concat(".stl").c_str())) {
            std::fprintf(stderr, "kernel_loop: %s could not be written\n", file.c_str());
            return 1;
        }
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    std::printf("%.3f\n", taken.count());
    return 0;
}
