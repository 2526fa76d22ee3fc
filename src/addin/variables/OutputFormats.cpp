#include "addin/variables/OutputFormats.h"

namespace zn {

namespace {

constexpr OutputFormat formats[] = {
    {0, 57, u"<Prompt the user>", false},
    {1, 185, u"3D PDF - MBD (*.pdf)", false},
    {2, 58, u"3D LATTICE (*.3dlat)", false},
    {3, 59, u"ACIS (*.sat)", true},
    {4, 60, u"Adobe Illustrator (*.ai)", false},
    {5, 61, u"Adobe PDF (*.pdf)", true},
    {6, 62, u"Adobe Photoshop (*.psd)", true},
    {7, 63, u"Astria Graphics (*.agr)", false},
    {8, 64, u"DXF (*.dxf)", true},
    {9, 65, u"DWG (*.dwg)", true},
    {10, 66, u"Viewpane (*.vprt; *.vasm; *.vdrw)", true},
    {11, 67, u"HCG-File (*.hcg)", false},
    {12, 68, u"HOOPS HSF (*.hsf)", false},
    {13, 69, u"IGES (*.igs)", true},
    {14, 70, u"JPEG (*.jpg)", false},
    {15, 71, u"Microsoft XAML (*.xaml)", false},
    {16, 72, u"Parasolid (*.x_t)", true},
    {17, 73, u"Parasolid Binary (*.x_b)", true},
    {18, 142, u"STEP (*.step)", true},
    {19, 74, u"STL (*.stl)", true},
    {20, 75, u"TIF (*.tif)", true},
    {21, 77, u"VDAFS (*.vda)", false},
    {22, 78, u"VRML (*.wrl)", true},
};

} // namespace

std::span<const OutputFormat> outputFormats() { return formats; }

const OutputFormat* findOutputFormat(TextView label)
{
    for (const OutputFormat& format : formats) {
        if (equalNoCase(format.label, label))
            return &format;
    }
    return nullptr;
}

} // namespace zn
