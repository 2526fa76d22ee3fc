#include "addin/pages/print/PrintSettings.h"

#include "addin/variables/TaskVariables.h"

namespace zn {

PrintSettings PrintSettings::read(const ObjectRef& task)
{
    PrintSettings settings;
    const auto number = [&](TextView name, std::int32_t absent) { return readInteger(task, name).value_or(absent); };
    settings.printerSelection = static_cast<PrinterSelection>(number(u"__printer_prseltype", 0));
    settings.printerName = readText(task, u"__printer_prname").value_or(Text());
    settings.printerNames = readText(task, u"__printer_prnamelist").value_or(Text());
    settings.paperSize = number(u"__printer_defpapsize", defaultPaperSize);
    settings.userSizeChange = readBoolean(task, u"__printer_usersizechange").value_or(true);
    settings.orientation = number(u"__printer_deforientation", 0);
    settings.userOrientationChange = readBoolean(task, u"__printer_userorientchange").value_or(true);
    settings.marginType = number(u"__printer_margintype", margins::prompt);
    settings.headerType = number(u"__printer_headertype", margins::prompt);
    settings.footerType = number(u"__printer_footertype", margins::prompt);
    settings.autoSelect
        = static_cast<AutoSelect>(number(u"__printer_autoselectrefstype", static_cast<int>(AutoSelect::Drawings)));
    const auto version = readInteger(task, u"__printer_refversiontype");
    settings.asksVersion = version.value_or(2) == static_cast<int>(ReferenceVersion::Prompt);
    settings.startsWithLatest = version.value_or(0) != static_cast<int>(ReferenceVersion::Referenced);
    return settings;
}

} // namespace zn
