#include "zentrel/application/PageSetup.h"

#include "zentrel/application/PrinterPaper.h"

#include <fmt/format.h>

namespace zn::zentrel {

namespace {

constexpr double largestPercent = 100000.0;

} // namespace

template <auto Texts> Value PageSetup::setTexts(Arguments& arguments)
{
    m_settings.*Texts = {arguments.text(0), arguments.text(1), arguments.text(2)};
    return {};
}

const MemberTable& PageSetup::members() const
{
    static const Member rows[] = {
        {u"Orientation", MemberUse::Call, u"", member<&PageSetup::getOrientation>},
        {u"Orientation", MemberUse::Put, u"Value", member<&PageSetup::putOrientation>},
        {u"PrinterPaperSize", MemberUse::Call, u"", member<&PageSetup::getPaper>},
        {u"PrinterPaperSize", MemberUse::Put, u"Value", member<&PageSetup::putPaper>},
        {u"ScaleToFit", MemberUse::Call, u"", member<&PageSetup::getScaleToFit>},
        {u"ScaleToFit", MemberUse::Put, u"Value", member<&PageSetup::putScaleToFit>},
        {u"Scale2", MemberUse::Call, u"", member<&PageSetup::getScale>},
        {u"Scale2", MemberUse::Put, u"Value", member<&PageSetup::putScale>},
        {u"SetHeader", MemberUse::Call, u"Left Center Right", member<&PageSetup::setTexts<&PageSettings::header>>},
        {u"SetFooter", MemberUse::Call, u"Left Center Right", member<&PageSetup::setTexts<&PageSettings::footer>>},
    };
    static const MemberTable table(rows);
    return table;
}

Value PageSetup::getOrientation(Arguments&) { return static_cast<std::int32_t>(m_settings.orientation); }

Value PageSetup::putOrientation(Arguments& arguments)
{
    const std::int32_t value = arguments.integer(0);
    if (value != static_cast<std::int32_t>(PageOrientation::Portrait)
        && value != static_cast<std::int32_t>(PageOrientation::Landscape))
        throw StatusError(zn::E_INVALIDARG,
            fmt::format("The orientation of a page is 1 (portrait) or 2 (landscape), not {}.", value));
    m_settings.orientation = static_cast<PageOrientation>(value);
    return {};
}

Value PageSetup::getPaper(Arguments&) { return m_settings.paper; }

Value PageSetup::putPaper(Arguments& arguments)
{
    const std::int32_t number = arguments.integer(0);
    if (!printerPaper(number))
        throw StatusError(zn::E_INVALIDARG, fmt::format("There is no paper size with the number {}.", number));
    m_settings.paper = number;
    return {};
}

Value PageSetup::getScaleToFit(Arguments&) { return m_settings.scaleToFit; }

Value PageSetup::putScaleToFit(Arguments& arguments)
{
    m_settings.scaleToFit = arguments.boolean(0);
    return {};
}

Value PageSetup::getScale(Arguments&) { return m_settings.scalePercent; }

Value PageSetup::putScale(Arguments& arguments)
{
    const double percent = arguments.value(0).toDouble();
    if (!(percent > 0.0 && percent <= largestPercent))
        throw StatusError(zn::E_INVALIDARG,
            fmt::format("The scale of a page is above 0 and at most {:g} percent, not {:g}.", largestPercent, percent));
    m_settings.scalePercent = percent;
    return {};
}

} // namespace zn::zentrel
