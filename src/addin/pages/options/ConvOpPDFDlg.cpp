#include "addin/pages/options/ConvOpPDFDlg.h"

#include "addin/pages/options/OptionWindow.h"

#include <QCheckBox>

namespace zn {

namespace {

enum Control : int { InColor = 301, EmbedFonts, HighQuality, PrintHeaderFooter, PrinterLineWeights };

} // namespace

CConvOpPDFDlg::CConvOpPDFDlg(OptionSetting setting)
    : CConvOpDlg(std::move(setting), u"ConvOpPDFDlg", pdfOptions)
{
}

void CConvOpPDFDlg::makeControls(OptionWindow& window)
{
    window.placeRows({
        addCheckBox(InColor, "inColor", u"&Export PDF in color", u"PdfInColor"),
        addCheckBox(EmbedFonts, "embedFonts", u"E&mbed fonts", u"PdfEmbedFonts"),
        addCheckBox(HighQuality, "highQuality", u"&High quality", u"PdfHighQuality"),
        addCheckBox(PrintHeaderFooter, "printHeaderFooter", u"&Print header/footer", u"PdfPrintHeaderFooter"),
        addCheckBox(PrinterLineWeights, "printerLineWeights", u"Use specified printer line &weights",
            u"PdfUsePrinterLineWeights"),
    });
}

} // namespace zn
