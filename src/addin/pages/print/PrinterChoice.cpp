#include "addin/pages/print/PrinterChoice.h"

#include "platform/Printers.h"

#include <algorithm>

namespace zn {

namespace {

std::vector<Text> linesOf(TextView list)
{
    std::vector<Text> names;
    Text withLineFeeds(list);
    std::replace(withLineFeeds.begin(), withLineFeeds.end(), u'\r', u'\n');
    for (Text& name : split(withLineFeeds, u'\n')) {
        if (!name.empty())
            names.push_back(std::move(name));
    }
    return names;
}

} // namespace

std::vector<Text> offeredPrinters(Printers& printers, TextView nameList, TextView fixedName)
{
    std::vector<Text> names = linesOf(nameList);
    const bool isListed
        = std::any_of(names.begin(), names.end(), [&](const Text& name) { return equalNoCase(name, fixedName); });
    if (!isListed && !fixedName.empty())
        names = {Text(fixedName)};
    if (names.empty())
        return names; // the machine needn't be asked, which may take it a while
    const std::vector<Printer> present = printers.list();
    std::erase_if(names, [&](const Text& name) {
        return std::none_of(
            present.begin(), present.end(), [&](const Printer& printer) { return equalNoCase(printer.name, name); });
    });
    return names;
}

} // namespace zn
