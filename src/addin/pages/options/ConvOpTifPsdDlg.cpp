#include "addin/pages/options/ConvOpTifPsdDlg.h"

#include "addin/pages/options/OptionWindow.h"

#include <QFormLayout>
#include <QGroupBox>

namespace zn {

namespace {

enum Control : int { OutputGroup = 301, ImageTypeLabel, ImageTypeList, CompressionLabel, CompressionList };

constexpr ListRow imageTypeRows[] = {
    {48, u"Black & white (bilevel)", 0},
    {49, u"RGB full color", 1},
    {50, u"Gray scale", 2},
};

constexpr ListRow compressionRows[] = {
    {51, u"Uncompressed", 0},
    {52, u"Packbits", 1},
    {53, u"Group 4 Fax", 2},
};

} // namespace

CConvOpTifPsdDlg::CConvOpTifPsdDlg(OptionSetting setting)
    : CConvOpDlg(std::move(setting), u"ConvOpTifPsdDlg", tifOptions)
{
}

void CConvOpTifPsdDlg::makeControls(OptionWindow& window)
{
    auto* output = window.control<QGroupBox>(OutputGroup, "outputAs", u"Output as");
    auto* fields = new QFormLayout(output);
    addLabelledList(
        *fields, ImageTypeLabel, u"&Image type:", addList(ImageTypeList, "imageType", u"TifImageType", imageTypeRows));
    addLabelledList(*fields, CompressionLabel, u"&Compression scheme:",
        addList(CompressionList, "compressionScheme", u"TifCompressionScheme", compressionRows));
    window.placeRows({output});
}

} // namespace zn
