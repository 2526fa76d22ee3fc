#include "addin/pages/conversion/FormatList.h"

#include "addin/installation/FormatLabels.h"
#include "addin/libraries/flowicons/FlowIcons.h"
#include "addin/pages/frame/Images.h"
#include "addin/pages/frame/PageEnvironment.h"
#include "addin/variables/OutputFormats.h"

#include <QComboBox>

namespace zn {

namespace {

/// ".vprt" of "Viewpane (*.vprt; *.vasm; *.vdrw)"; empty if the label names no files.
QString firstExtension(const QString& label)
{
    const qsizetype bracket = label.indexOf("(*");
    if (bracket < 0)
        return {};
    const QString names = label.mid(bracket + 2);
    qsizetype end = names.indexOf(u';');
    if (end < 0)
        end = names.indexOf(u')');
    return names.left(end);
}

QIcon formatIcon(std::int32_t code, const QString& label, PageEnvironment& environment)
{
    if (code == pdf3dFormatCode)
        return environment.flowIcon(flowicons::Picture::Pdf3d);
    const QString extension = firstExtension(label);
    return extension.isEmpty() ? QIcon() : fileTypeIcon(extension);
}

} // namespace

void fillFormatList(QComboBox& list, PageEnvironment& environment, bool launch)
{
    for (const OutputFormat& format : outputFormats()) {
        if (launch && format.code == promptFormatCode)
            continue;
        const QString label = environment.text(format.stringNumber, format.label);
        list.addItem(formatIcon(format.code, label, environment), label, format.code);
    }
    list.setCurrentIndex(0);
}

std::int32_t selectedFormat(const QComboBox& list) { return list.currentData().toInt(); }

void selectFormat(QComboBox& list, PageEnvironment& environment, TextView label)
{
    const OutputFormat* format = findFormatInAnyLanguage(environment.platform(), label);
    const int row = format ? list.findData(format->code) : -1;
    list.setCurrentIndex(row < 0 ? 0 : row);
}

} // namespace zn
