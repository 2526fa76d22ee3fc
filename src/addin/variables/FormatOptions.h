#pragma once

#include "base/Value.h"

#include <span>

/// The settings of the conversion formats that have an option dialog, one table a dialog. Each setting is a task
/// variable, which a macro takes by its name: names and numbers are the CAD application's.
namespace zn {

struct FormatOption {
    TextView name;
    ValueType type; ///< Int32 or Boolean
    /// What a new task stores; a boolean is 0 or 1.
    std::int32_t initial;
    /// What the button "Reset All" gives.
    std::int32_t reset;

    constexpr FormatOption resetTo(std::int32_t value) const { return {name, type, initial, value}; }
};

constexpr FormatOption number(TextView name, std::int32_t value) { return {name, ValueType::Int32, value, value}; }
constexpr FormatOption flag(TextView name, bool value)
{
    return {name, ValueType::Boolean, value ? 1 : 0, value ? 1 : 0};
}

inline constexpr FormatOption acisOptions[] = {
    number(u"AcisGeometry", 0), // 0 surfaces, 1 curves, 2 curves and sketch entities
    number(u"AcisVersion", 18),
    number(u"AcisOutputAsUnit", 0),
};

inline constexpr FormatOption stepOptions[] = {
    number(u"StepGeometry", 0), // as of ACIS
    number(u"StepVersion", 203),
};

inline constexpr FormatOption parasolidOptions[] = {
    number(u"ParasolidVersion", 17),
    flag(u"ParasolidFlattenHierarchy", false),
};

inline constexpr FormatOption pdfOptions[] = {
    flag(u"PdfInColor", true),
    flag(u"PdfEmbedFonts", true),
    flag(u"PdfHighQuality", false),
    flag(u"PdfPrintHeaderFooter", false),
    flag(u"PdfUsePrinterLineWeights", true),
};

inline constexpr FormatOption igesOptions[] = {
    flag(u"IgesExportSolidSurface", true),
    number(u"IgesRepresentation", 0),
    flag(u"IgesExportWireframe", false),
    number(u"IgesCurveRepresentation", 0),
    number(u"IgesSystem", 0),
    flag(u"IgesExportFreeCurves", true),
    flag(u"IgesExportSketchEntities", false),
    flag(u"IgesHighCurveAccuracy", true),
    flag(u"IgesComponentsIntoOneFile", true),
    flag(u"IgesFlattenAssemblyHierarchy", true),
};

inline constexpr FormatOption stlOptions[] = {
    flag(u"StlOutputAs", true), // binary
    number(u"StlOutputAsUnit", 0),
    number(u"StlQuality", 1), // 1 coarse, 2 fine
    flag(u"StlDontTranslatePositive", false),
    flag(u"StlComponentsIntoOneFile", false),
    flag(u"StlCheckForInterferences", false),
};

inline constexpr FormatOption tifOptions[] = {
    number(u"TifImageType", 1),
    number(u"TifCompressionScheme", 0),
};

/// A task that nobody edited keeps millimetres and several files; only the reset gives metres and one file.
inline constexpr FormatOption vrmlOptions[] = {
    number(u"VrmlOutputAsUnit", 0).resetTo(2),
    flag(u"VrmlSaveAssemblyAsOneFile", false).resetTo(1),
};

inline constexpr FormatOption viewpaneOptions[] = {
    flag(u"VwpnOkayToMeasure", false),
    flag(u"VwpnAllowExportOfSTL", false),
    flag(u"VwpnSaveShadedData", true),
    flag(u"VwpnSaveBOM", true),
    flag(u"VwpnSaveMotionStudies", true),
    flag(u"VwpnSaveMotionStudiesToAllConfs", false),
    flag(u"VwpnRecalcMotionStudies", true),
};

/// The check boxes are stored as the integers 0 and 1.
inline constexpr FormatOption sheetMetalOptions[] = {
    number(u"SheetMetalGeometry", 1), number(u"SheetMetalHiddenEdges", 1), number(u"SheetMetalBendLines", 1),
    number(u"SheetMetalSketches", 1), number(u"SheetMetalLibraryFeatures", 1), number(u"SheetMetalFormingTools", 1),
    number(u"SheetMetalBoundingBox", 1), number(u"SheetMetalMergeCoplanar", 0), // 0 merge, 1 don't
    flag(u"SheetMetalExportAs", true),                                          // a single file
    number(u"SheetMetalOptions", 2175), // computed from the eight integers above
};

inline constexpr std::span<const FormatOption> formatOptionTables[] = {
    acisOptions,
    stepOptions,
    parasolidOptions,
    pdfOptions,
    igesOptions,
    stlOptions,
    tifOptions,
    vrmlOptions,
    viewpaneOptions,
    sheetMetalOptions,
};

} // namespace zn
