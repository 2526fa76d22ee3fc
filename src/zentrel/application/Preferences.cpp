#include "zentrel/application/Preferences.h"

#include "contracts/objectmodel/Enumerations.h"

#include <fmt/format.h>

namespace zn::zentrel {

namespace {

/// What differs from off and 0 in a fresh process.
constexpr preference::Toggle togglesOn[] = {
    preference::PdfInColor,
    preference::PdfEmbedFonts,
    preference::PdfUseCurrentPrintLineWeights,
    preference::IgesExportSolidAndSurface,
    preference::IgesExportFreeCurves,
    preference::IgesHighTrimCurveAccuracy,
    preference::IgesComponentsIntoOneFile,
    preference::IgesFlattenAssemHierarchy,
    preference::StlBinaryFormat,
    preference::ViewpaneSaveShadedDataInDrawings,
    preference::ViewpaneSaveBom,
    preference::ViewpaneSaveAnimationOkay,
    preference::ViewpaneSaveAnimationRecalculate,
    preference::PageSetupUsePrinterMargin,
    preference::ViewNamesFollowModel,
};
constexpr std::pair<preference::Integer, std::int32_t> integersSet[] = {
    {preference::OutputVersion, 18},
    {preference::StepAp, 203},
    {preference::ParasolidOutputVersion, 17},
    {preference::StlQuality, 1},
    {preference::TiffImageType, 1},
    {preference::ViewpaneSaveAsSelectionOption, 1},
};

template <class Map> auto& entry(Map& map, std::int32_t number)
{
    const auto found = map.find(number);
    if (found == map.end())
        throw StatusError(
            zn::E_INVALIDARG, fmt::format("There is no preference of this kind with the number {}.", number));
    return found->second;
}

std::int32_t among(std::int32_t value, std::initializer_list<std::int32_t> known, const char* what)
{
    for (const std::int32_t one : known)
        if (one == value)
            return value;
    throw StatusError(zn::E_INVALIDARG, fmt::format("{} cannot be {}.", what, value));
}

LengthUnit unit(std::int32_t value, const char* what)
{
    return static_cast<LengthUnit>(among(value, {0, 1, 2, 3, 4}, what));
}

} // namespace

Preferences::Preferences()
{
    for (const EnumerationMember& member : enumerationMembers()) {
        const TextView group = member.enumeration;
        if (group == u"znUserPreferenceToggle_e")
            m_toggles[member.value] = false;
        else if (group == u"znUserPreferenceIntegerValue_e")
            m_integers[member.value] = 0;
        else if (group == u"znUserPreferenceDoubleValue_e")
            m_decimals[member.value] = 0.0;
        else if (group == u"znUserPreferenceStringListValue_e")
            m_textLists[member.value] = {};
    }
    for (const auto number : togglesOn)
        m_toggles[number] = true;
    for (const auto& [number, value] : integersSet)
        m_integers[number] = value;
}

bool Preferences::toggle(std::int32_t number) const { return entry(m_toggles, number); }
void Preferences::setToggle(std::int32_t number, bool value) { entry(m_toggles, number) = value; }
std::int32_t Preferences::integer(std::int32_t number) const { return entry(m_integers, number); }
void Preferences::setInteger(std::int32_t number, std::int32_t value) { entry(m_integers, number) = value; }
double Preferences::decimal(std::int32_t number) const { return entry(m_decimals, number); }
void Preferences::setDecimal(std::int32_t number, double value) { entry(m_decimals, number) = value; }
Text Preferences::textList(std::int32_t number) const { return entry(m_textLists, number); }
void Preferences::setTextList(std::int32_t number, Text value) { entry(m_textLists, number) = std::move(value); }

StepOptions Preferences::stepOptions() const
{
    return {.protocol = among(integer(preference::StepAp), {203, 214}, "The STEP protocol"),
        .geometry = static_cast<GeometryPreference>(
            among(integer(preference::AcisOutputGeometryPreference), {0, 1, 2}, "The output geometry"))};
}

IgesOptions Preferences::igesOptions() const
{
    return {.solidAndSurface = toggle(preference::IgesExportSolidAndSurface),
        .representation = among(integer(preference::IgesRepresentation), {0, 3}, "The IGES representation"),
        .wireframe = toggle(preference::IgesExportAsWireframe),
        .system = integer(preference::IgesSystem),
        .freeCurves = toggle(preference::IgesExportFreeCurves),
        .highTrimAccuracy = toggle(preference::IgesHighTrimCurveAccuracy),
        .flattenHierarchy = toggle(preference::IgesFlattenAssemHierarchy)};
}

StlOptions Preferences::stlOptions() const
{
    return {.binary = toggle(preference::StlBinaryFormat),
        .unit = unit(integer(preference::ExportStlUnits), "The STL unit"),
        .quality = integer(preference::StlQuality) == 1 ? MeshQuality::Coarse : MeshQuality::Fine,
        .keepPosition = toggle(preference::StlDontTranslateToPositive)};
}

VrmlOptions Preferences::vrmlOptions() const
{
    return {.unit = unit(integer(preference::ExportVrmlUnits), "The VRML unit"), .quality = MeshQuality::Coarse};
}

PdfOptions Preferences::pdfOptions() const
{
    return {.sheets = {},
        .color = toggle(preference::PdfInColor),
        .highQuality = toggle(preference::PdfHighQuality),
        .headerFooter = toggle(preference::PdfPrintHeaderFooter),
        .lineWeights = toggle(preference::PdfUseCurrentPrintLineWeights)};
}

TiffOptions Preferences::tiffOptions() const
{
    return {.colors
        = static_cast<TiffColors>(among(integer(preference::TiffImageType), {0, 1, 2}, "The image type of TIF")),
        .compression = static_cast<TiffCompression>(
            among(integer(preference::TiffCompressionScheme), {0, 1, 2}, "The compression of TIF"))};
}

} // namespace zn::zentrel
