#include "contracts/objectmodel/Enumerations.h"

#include <unordered_map>
#include <unordered_set>

namespace zn::zentrel {

namespace {

using namespace preference;

constexpr char16_t documentTypes[] = u"znDocumentTypes_e";
constexpr char16_t loadErrors[] = u"znFileLoadError_e";
constexpr char16_t saveErrors[] = u"znFileSaveError_e";
constexpr char16_t saveWarnings[] = u"znFileSaveWarning_e";
constexpr char16_t saveVersions[] = u"znSaveAsVersion_e";
constexpr char16_t saveOptions[] = u"znSaveAsOptions_e";
constexpr char16_t exportDataTypes[] = u"znExportDataFileType_e";
constexpr char16_t sheetsToExport[] = u"znExportDataSheetsToExport_e";
constexpr char16_t toggles[] = u"znUserPreferenceToggle_e";
constexpr char16_t integers[] = u"znUserPreferenceIntegerValue_e";
constexpr char16_t doubles[] = u"znUserPreferenceDoubleValue_e";
constexpr char16_t textLists[] = u"znUserPreferenceStringListValue_e";
constexpr char16_t viewpaneSelections[] = u"znViewpaneSaveAsSelection_e";
constexpr char16_t standardViews[] = u"znStandardViews_e";
constexpr char16_t publishStatuses[] = u"znPublishTo3DPDF_e";
constexpr char16_t dwgExports[] = u"znExportToDWG_e";
constexpr char16_t pageSetups[] = u"znPageSetupInUse_e";

constexpr EnumerationMember table[] = {
    {documentTypes, u"znDocNONE", 0},
    {documentTypes, u"znDocPART", 1},
    {documentTypes, u"znDocASSEMBLY", 2},
    {documentTypes, u"znDocDRAWING", 3},

    {loadErrors, u"znGenericError", LoadGenericError},
    {loadErrors, u"znFileNotFoundError", LoadFileNotFound},
    {loadErrors, u"znFileAccessDenied", LoadAccessDenied},
    {loadErrors, u"znInvalidFileTypeError", LoadInvalidFileType},
    {loadErrors, u"znFileDamaged", LoadFileDamaged},
    {loadErrors, u"znFileIncomplete", LoadIncomplete},
    {loadErrors, u"znFutureVersion", LoadFutureVersion},
    {loadErrors, u"znConfigurationNotFound", LoadUnknownConfiguration},

    {saveErrors, u"znGenericSaveError", SaveGenericError},
    {saveErrors, u"znReadOnlySaveError", SaveNotWritable},
    {saveErrors, u"znFileNameEmpty", SaveEmptyName},
    {saveErrors, u"znFileSaveReferenceMissing", SaveReferenceMissing},
    {saveErrors, u"znFileSaveAsInvalidFileExtension", SaveInvalidExtension},
    {saveErrors, u"znFileSaveRefused", SaveRefusedByListener},
    {saveErrors, u"znFileSaveAsNotSupported", SaveFormNotSupported},

    {saveWarnings, u"znFileSaveWarning_MissingOLEObjects", 512},

    {saveVersions, u"znSaveAsCurrentVersion", 0},

    {saveOptions, u"znSaveAsOptions_Silent", SaveSilent},
    {saveOptions, u"znSaveAsOptions_Copy", SaveCopy},
    {saveOptions, u"znSaveAsOptions_UpdateInactiveViews", SaveUpdateInactiveViews},

    {exportDataTypes, u"znExportPdfData", 1},

    {sheetsToExport, u"znExportData_ExportAllSheets", static_cast<std::int32_t>(SheetsToExport::All)},
    {sheetsToExport, u"znExportData_ExportCurrentSheet", static_cast<std::int32_t>(SheetsToExport::Current)},
    {sheetsToExport, u"znExportData_ExportSpecifiedSheets", static_cast<std::int32_t>(SheetsToExport::Specified)},

    {toggles, u"znPDFExportInColor", PdfInColor},
    {toggles, u"znPDFExportEmbedFonts", PdfEmbedFonts},
    {toggles, u"znPDFExportHighQuality", PdfHighQuality},
    {toggles, u"znPDFExportPrintHeaderFooter", PdfPrintHeaderFooter},
    {toggles, u"znPDFExportUseCurrentPrintLineWeights", PdfUseCurrentPrintLineWeights},
    {toggles, u"znIGESExportSolidAndSurface", IgesExportSolidAndSurface},
    {toggles, u"znIGESExportAsWireframe", IgesExportAsWireframe},
    {toggles, u"znIGESExportFreeCurves", IgesExportFreeCurves},
    {toggles, u"znIGESExportSketchEntities", IgesExportSketchEntities},
    {toggles, u"znIGESHighTrimCurveAccuracy", IgesHighTrimCurveAccuracy},
    {toggles, u"znIGESComponentsIntoOneFile", IgesComponentsIntoOneFile},
    {toggles, u"znIGESFlattenAssemHierarchy", IgesFlattenAssemHierarchy},
    {toggles, u"znXTAssemSaveFormat", XtAssemSaveFormat},
    {toggles, u"znExportVrmlAllComponentsInSingleFile", VrmlAllComponentsInSingleFile},
    {toggles, u"znSTLBinaryFormat", StlBinaryFormat},
    {toggles, u"znSTLDontTranslateToPositive", StlDontTranslateToPositive},
    {toggles, u"znSTLComponentsIntoOneFile", StlComponentsIntoOneFile},
    {toggles, u"znSTLCheckForInterference", StlCheckForInterference},
    {toggles, u"znViewpaneOkayToMeasure", ViewpaneOkayToMeasure},
    {toggles, u"znViewpaneExportSTLOkay", ViewpaneExportStlOkay},
    {toggles, u"znViewpaneSaveShadedDataInDrawings", ViewpaneSaveShadedDataInDrawings},
    {toggles, u"znViewpaneSaveBOM", ViewpaneSaveBom},
    {toggles, u"znViewpaneSaveAnimationOkay", ViewpaneSaveAnimationOkay},
    {toggles, u"znViewpaneSaveAnimationToAllConfigs", ViewpaneSaveAnimationToAllConfigs},
    {toggles, u"znViewpaneSaveAnimationRecalculate", ViewpaneSaveAnimationRecalculate},
    {toggles, u"znPageSetupPrinterUsePrinterMargin", PageSetupUsePrinterMargin},
    {toggles, u"znSuppressQuestions", SuppressQuestions},
    {toggles, u"znSuppressProgress", SuppressProgress},
    {toggles, u"znDrawingViewNamesFollowModel", ViewNamesFollowModel},

    {integers, u"znIGESRepresentation", IgesRepresentation},
    {integers, u"znIGESCurveRepresentation", IgesCurveRepresentation},
    {integers, u"znIGESSystem", IgesSystem},
    {integers, u"znAcisOutputGeometryPreference", AcisOutputGeometryPreference},
    {integers, u"znOutputVersion", OutputVersion},
    {integers, u"znAcisOutputUnits", AcisOutputUnits},
    {integers, u"znStepAP", StepAp},
    {integers, u"znParasolidOutputVersion", ParasolidOutputVersion},
    {integers, u"znExportVrmlUnits", ExportVrmlUnits},
    {integers, u"znExportStlUnits", ExportStlUnits},
    {integers, u"znSTLQuality", StlQuality},
    {integers, u"znTiffImageType", TiffImageType},
    {integers, u"znTiffCompressionScheme", TiffCompressionScheme},
    {integers, u"znViewpaneSaveAsSelectionOption", ViewpaneSaveAsSelectionOption},
    {integers, u"znMessageLevel", MessageLevel},

    {doubles, u"znPageSetupPrinterTopMargin", TopMargin},
    {doubles, u"znPageSetupPrinterBottomMargin", BottomMargin},
    {doubles, u"znPageSetupPrinterLeftMargin", LeftMargin},
    {doubles, u"znPageSetupPrinterRightMargin", RightMargin},

    {textLists, u"znEmodelSelectionList", EmodelSelectionList},

    {viewpaneSelections, u"znViewpaneSaveActive", 1},
    {viewpaneSelections, u"znViewpaneSaveAll", 2},
    {viewpaneSelections, u"znViewpaneSaveSelected", 3},

    {standardViews, u"znFrontView", 1},
    {standardViews, u"znBackView", 2},
    {standardViews, u"znLeftView", 3},
    {standardViews, u"znRightView", 4},
    {standardViews, u"znTopView", 5},
    {standardViews, u"znBottomView", 6},
    {standardViews, u"znIsometricView", 7},
    {standardViews, u"znTrimetricView", 8},
    {standardViews, u"znDimetricView", 9},

    {publishStatuses, u"znPublishTo3DPDF_Success", PublishSuccess},
    {publishStatuses, u"znPublishTo3DPDF_InvalidPath", PublishInvalidPath},
    {publishStatuses, u"znPublishTo3DPDF_InvalidTheme", PublishInvalidTheme},
    {publishStatuses, u"znPublishTo3DPDF_UnknownError", PublishUnknownError},
    {publishStatuses, u"znPublishTo3DPDF_NothingToPublish", PublishNothingToPublish},

    {dwgExports, u"znExportToDWG_ExportSheetMetal", 1},
    {dwgExports, u"znExportToDWG_ExportSelectedFacesOrLoops", 2},
    {dwgExports, u"znExportToDWG_ExportAnnotationViews", 3},

    {pageSetups, u"znPageSetupInUse_Application", 1},
    {pageSetups, u"znPageSetupInUse_DrawingSheet", 2},
    {pageSetups, u"znPageSetupInUse_Document", 3},
};

} // namespace

std::span<const EnumerationMember> enumerationMembers() { return table; }

std::optional<std::int32_t> enumerationValue(zn::TextView name)
{
    static const auto values = [] {
        std::unordered_map<zn::Text, std::int32_t> map;
        for (const EnumerationMember& member : table)
            map.emplace(zn::foldCase(member.name), member.value);
        return map;
    }();
    const auto found = values.find(zn::foldCase(name));
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

bool isEnumeration(zn::TextView name)
{
    static const auto names = [] {
        std::unordered_set<zn::Text> set;
        for (const EnumerationMember& member : table)
            set.insert(zn::foldCase(member.enumeration));
        return set;
    }();
    return names.contains(zn::foldCase(name));
}

} // namespace zn::zentrel
