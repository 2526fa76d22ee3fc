#include "addin/pages/selection/FileFilter.h"

namespace zn {

namespace {

struct FilterGroup {
    int number; ///< of the label
    const char16_t* label;
    std::vector<TextView> extensions;
};

const std::vector<FilterGroup>& filterGroups()
{
    // Extensions that come twice belong to the labels as users know them.
    static const std::vector<FilterGroup> groups = {
        {145, u"Zentrel Files", {u"zenasm", u"zenprt", u"zendrw"}},
        {146, u"Part", {u"prt", u"zenprt"}},
        {147, u"Assembly", {u"asm", u"zenasm"}},
        {148, u"Drawing", {u"drw", u"zendrw"}},
        {149, u"DXF", {u"dxf"}},
        {150, u"DWG", {u"dwg"}},
        {151, u"Adobe Photoshop Files", {u"psd"}},
        {152, u"Adobe Illustrator Files", {u"ai"}},
        {153, u"Lib Feat Part", {u"lfp", u"zenlfp"}},
        {154, u"Template", {u"zenptl", u"zenatl", u"zendtl"}},
        {155, u"Parasolid", {u"x_t", u"x_b", u"xmt_txt", u"xmt_bin"}},
        {156, u"IGES", {u"igs", u"iges"}},
        {157, u"STEP AP203/214", {u"step", u"stp"}},
        {158, u"ACIS", {u"sat"}},
        {159, u"VDAFS", {u"vda"}},
        {171, u"VRML", {u"wrl"}},
        {172, u"STL", {u"stl"}},
        {173, u"Astria Graphics", {u"agr"}},
        {174, u"ProE Part", {u"prt", u"prt", u"xpr"}},
        {175, u"ProE Assembly", {u"asm", u"asm", u"xas"}},
        {176, u"UGII", {u"prt"}},
        {177, u"Inventor Part", {u"ipt"}},
        {178, u"Inventor Assembly", {u"iam"}},
        {179, u"Solid Edge Part", {u"par", u"psm"}},
        {180, u"Solid Edge Assembly", {u"asm"}},
        {181, u"CADKEY", {u"prt", u"ckd"}},
        {182, u"IDF", {u"emn", u"brd", u"bdf", u"idb"}},
        {183, u"Rhino", {u"3dm"}},
        {184, u"All files", {u"*"}},
    };
    return groups;
}

const FilterGroup& drawingGroup()
{
    static const FilterGroup group{189, u"ZENTREL Drawing", {u"zendrw"}};
    return group;
}

Text patterns(const FilterGroup& group, TextView separator)
{
    Text out;
    for (const TextView extension : group.extensions)
        out.append(out.empty() ? TextView() : separator).append(u"*.").append(extension);
    return out;
}

Text pairOf(const FilterGroup& group, const LookUpText& lookUp)
{
    return lookUp(group.number, group.label) + u" (" + patterns(group, u";") + u")|" + patterns(group, u"; ") + u"|";
}

} // namespace

Text selectionFilter(const LookUpText& lookUp, bool drawingsOnly)
{
    if (drawingsOnly)
        return pairOf(drawingGroup(), lookUp);
    Text filter;
    for (const FilterGroup& group : filterGroups())
        filter += pairOf(group, lookUp);
    return filter;
}

} // namespace zn
