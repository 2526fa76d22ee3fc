#pragma once

#include "base/Text.h"

#include <cstdint>
#include <optional>
#include <span>

/// The named constants of the object model: what macros write, and what the numbers mean.
namespace zn::zentrel {

struct EnumerationMember {
    const char16_t* enumeration;
    const char16_t* name;
    std::int32_t value;
};

/// All constants, grouped by enumeration.
std::span<const EnumerationMember> enumerationMembers();

std::optional<std::int32_t> enumerationValue(zn::TextView name);
bool isEnumeration(zn::TextView name);

/// znFileLoadError_e: why a document could not be opened. Single bits.
enum FileLoadError : std::int32_t {
    LoadGenericError = 1,
    LoadFileNotFound = 2,
    LoadAccessDenied = 4,
    LoadInvalidFileType = 1024,
    LoadFileDamaged = 2048,
    LoadIncomplete = 4096,
    LoadFutureVersion = 8192,
    LoadUnknownConfiguration = 16384,
};

/// znFileSaveError_e: why a document could not be saved. Single bits; 256 and 4096 are what macros test.
enum FileSaveError : std::int32_t {
    SaveGenericError = 1,
    SaveNotWritable = 2,
    SaveEmptyName = 4,
    SaveReferenceMissing = 16,
    SaveInvalidExtension = 256,
    SaveRefusedByListener = 2048,
    SaveFormNotSupported = 4096,
};

/// znSaveAsOptions_e
enum SaveAsOption : std::int32_t {
    SaveSilent = 1,
    SaveCopy = 2,
    SaveUpdateInactiveViews = 16,
};

/// znExportDataSheetsToExport_e
enum class SheetsToExport : std::int32_t { All = 1, Current = 2, Specified = 3 };

/// znPublishTo3DPDF_e
enum PublishStatus : std::int32_t {
    PublishSuccess = 0,
    PublishInvalidPath = 1,
    PublishInvalidTheme = 2,
    PublishUnknownError = 3,
    PublishNothingToPublish = 4,
};

/// Numbers of preferences that this program itself reads; Enumerations.cpp has the names of all.
namespace preference {
enum Toggle : std::int32_t {
    PdfInColor = 1,
    PdfEmbedFonts,
    PdfHighQuality,
    PdfPrintHeaderFooter,
    PdfUseCurrentPrintLineWeights,
    IgesExportSolidAndSurface,
    IgesExportAsWireframe,
    IgesExportFreeCurves,
    IgesExportSketchEntities,
    IgesHighTrimCurveAccuracy,
    IgesComponentsIntoOneFile,
    IgesFlattenAssemHierarchy,
    XtAssemSaveFormat,
    VrmlAllComponentsInSingleFile,
    StlBinaryFormat,
    StlDontTranslateToPositive,
    StlComponentsIntoOneFile,
    StlCheckForInterference,
    ViewpaneOkayToMeasure,
    ViewpaneExportStlOkay,
    ViewpaneSaveShadedDataInDrawings,
    ViewpaneSaveBom,
    ViewpaneSaveAnimationOkay,
    ViewpaneSaveAnimationToAllConfigs,
    ViewpaneSaveAnimationRecalculate,
    PageSetupUsePrinterMargin,
    SuppressQuestions = 290,
    SuppressProgress = 291,
    ViewNamesFollowModel = 347,
};
enum Integer : std::int32_t {
    IgesRepresentation = 1,
    IgesCurveRepresentation,
    IgesSystem,
    AcisOutputGeometryPreference,
    OutputVersion,
    AcisOutputUnits,
    StepAp,
    ParasolidOutputVersion,
    ExportVrmlUnits,
    ExportStlUnits,
    StlQuality,
    TiffImageType,
    TiffCompressionScheme,
    ViewpaneSaveAsSelectionOption,
    MessageLevel = 253,
};
enum Double : std::int32_t { TopMargin = 1, BottomMargin, LeftMargin, RightMargin };
enum TextList : std::int32_t { EmodelSelectionList = 1 };
} // namespace preference

} // namespace zn::zentrel
