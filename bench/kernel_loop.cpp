// The bare kernel over files, one process, nothing else.
//
//   kernel_loop stl|vrml|step FOLDER FILE...   read each STEP file or part, mesh it with the exporter's own parameters
//                                              or not at all, write it into the folder; prints wall and processor
//                                              seconds and the peak memory in kB
//   kernel_loop measure FILE...                what came out: triangles and volume of an STL file; solids, names,
//                                              colours and bytes of a STEP file; one line a file

#include "zentrel/formats/Mesh.h"
#include "zentrel/model/Container.h"

#include <BRep_Builder.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <STEPCAFControl_Reader.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <StlAPI_Writer.hxx>
#include <sys/resource.h>
#include <TDataStd_Name.hxx>
#include <TDF_ChildIterator.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <VrmlAPI_Writer.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace {

[[noreturn]] void fail(const std::filesystem::path& file, const char* what)
{
    std::fprintf(stderr, "kernel_loop: %s could not be %s\n", file.c_str(), what);
    std::exit(1);
}

bool isStep(const std::filesystem::path& file)
{
    const std::string extension = file.extension();
    return strcasecmp(extension.c_str(), ".step") == 0 || strcasecmp(extension.c_str(), ".stp") == 0;
}

/// A STEP file in the kernel's framework, with the settings of the program's own reader.
class CafFile {
public:
    explicit CafFile(const std::filesystem::path& file)
    {
        XCAFDoc_ShapeTool::SetAutoNaming(Standard_False);
        XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", m_document);
        STEPCAFControl_Reader reader;
        reader.SetColorMode(Standard_True);
        reader.SetNameMode(Standard_True);
        if (reader.ReadFile(file.c_str()) != IFSelect_RetDone || !reader.Transfer(m_document))
            fail(file, "read");
    }
    CafFile(const CafFile&) = delete;
    CafFile& operator=(const CafFile&) = delete;
    ~CafFile() { XCAFApp_Application::GetApplication()->Close(m_document); }

    const Handle(TDocStd_Document) & document() const { return m_document; }

    TopoDS_Compound shape() const
    {
        TDF_LabelSequence roots;
        XCAFDoc_DocumentTool::ShapeTool(m_document->Main())->GetFreeShapes(roots);
        BRep_Builder builder;
        TopoDS_Compound compound;
        builder.MakeCompound(compound);
        for (const TDF_Label& root : roots)
            builder.Add(compound, XCAFDoc_ShapeTool::GetShape(root));
        return compound;
    }

private:
    Handle(TDocStd_Document) m_document;
};

TopoDS_Compound shapeOf(const zn::zentrel::PartDocument& part)
{
    BRep_Builder builder;
    TopoDS_Compound compound;
    builder.MakeCompound(compound);
    for (const auto& body : part.configurations.at(part.active).bodies)
        builder.Add(compound, body.shape);
    return compound;
}

void writeMesh(const TopoDS_Shape& shape, const std::string& format, const std::filesystem::path& target)
{
    BRepMesh_IncrementalMesh(shape, zn::zentrel::meshParameters(shape, zn::zentrel::MeshQuality::Coarse));
    if (format == "vrml") {
        VrmlAPI_Writer writer;
        writer.SetRepresentation(VrmlAPI_ShadedRepresentation);
        if (!writer.Write(shape, target.c_str(), 2))
            fail(target, "written");
        return;
    }
    StlAPI_Writer writer;
    writer.ASCIIMode() = Standard_False;
    if (!writer.Write(shape, target.c_str()))
        fail(target, "written");
}

void convert(const std::filesystem::path& file, const std::string& format, const std::filesystem::path& folder)
{
    const auto target = folder / file.stem().concat(format == "stl" ? ".stl" : format == "vrml" ? ".wrl" : ".step");
    if (!isStep(file))
        return writeMesh(shapeOf(zn::zentrel::readPart(file)), format, target);
    const CafFile caf(file);
    if (format != "step")
        return writeMesh(caf.shape(), format, target);
    STEPCAFControl_Writer writer;
    writer.SetColorMode(Standard_True);
    writer.SetNameMode(Standard_True);
    if (!writer.Transfer(caf.document(), STEPControl_AsIs) || writer.Write(target.c_str()) != IFSelect_RetDone)
        fail(target, "written");
}

double seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

void measureStl(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(stream)), {});
    constexpr std::size_t head = 84;
    constexpr std::size_t facet = 50;
    if (bytes.size() < head || (bytes.size() - head) % facet != 0)
        fail(file, "measured");
    double volume = 0.0;
    for (std::size_t at = head; at < bytes.size(); at += facet) {
        float p[9];
        std::memcpy(p, bytes.data() + at + 12, sizeof p);
        volume += (double(p[0]) * (double(p[4]) * p[8] - double(p[5]) * p[7])
                      - double(p[1]) * (double(p[3]) * p[8] - double(p[5]) * p[6])
                      + double(p[2]) * (double(p[3]) * p[7] - double(p[4]) * p[6]))
            / 6.0;
    }
    std::printf("%zu %.9g\n", (bytes.size() - head) / facet, volume);
}

void measureStep(const std::filesystem::path& file)
{
    const CafFile caf(file);
    const TDF_Label root = caf.document()->Main();
    std::set<std::string> names;
    for (TDF_ChildIterator labels(XCAFDoc_DocumentTool::ShapesLabel(root), Standard_True); labels.More();
         labels.Next()) {
        Handle(TDataStd_Name) name;
        if (labels.Value().FindAttribute(TDataStd_Name::GetID(), name))
            names.insert(TCollection_AsciiString(name->Get()).ToCString());
    }
    TDF_LabelSequence colors;
    XCAFDoc_DocumentTool::ColorTool(root)->GetColors(colors);
    std::size_t solids = 0;
    for (TopExp_Explorer explorer(caf.shape(), TopAbs_SOLID); explorer.More(); explorer.Next())
        ++solids;
    std::printf("%zu %zu %d %ju\n", solids, names.size(), colors.Length(),
        static_cast<std::uintmax_t>(std::filesystem::file_size(file)));
}

} // namespace

int main(int argc, char** argv)
{
    const std::string format = argc > 2 ? argv[1] : "";
    if (format == "measure") {
        for (int i = 2; i < argc; ++i)
            isStep(argv[i]) ? measureStep(argv[i]) : measureStl(argv[i]);
        return 0;
    }
    if (argc < 4 || (format != "stl" && format != "vrml" && format != "step")) {
        std::fprintf(stderr, "Usage: kernel_loop stl|vrml|step FOLDER FILE... or kernel_loop measure FILE...\n");
        return 2;
    }
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 3; i < argc; ++i)
        convert(argv[i], format, argv[2]);
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    std::printf("%.3f %.3f %ld\n", wall.count(), seconds(used.ru_utime) + seconds(used.ru_stime), used.ru_maxrss);
    return 0;
}
