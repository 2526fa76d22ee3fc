#pragma once

#include "zentrel/application/ScriptObject.h"
#include "zentrel/formats/Write.h"
#include "zentrel/formats/WriteDrawing.h"
#include "zentrel/formats/WritePicture.h"

#include <map>

namespace zn::zentrel {

/// The application's preferences: numbered settings that macros write and that steer the writers.
/// They live as long as the process; what one macro sets stays set for the next.
class Preferences {
public:
    Preferences();

    // A number that no preference has is `E_INVALIDARG`.
    bool toggle(std::int32_t number) const;
    void setToggle(std::int32_t number, bool value);
    std::int32_t integer(std::int32_t number) const;
    void setInteger(std::int32_t number, std::int32_t value);
    double decimal(std::int32_t number) const;
    void setDecimal(std::int32_t number, double value);
    Text textList(std::int32_t number) const;
    void setTextList(std::int32_t number, Text value);

    // What the preferences mean for each writer. A stored number that a writer doesn't know is `E_INVALIDARG`, so that
    // nobody gets another unit or protocol than he asked for.
    StepOptions stepOptions() const;
    IgesOptions igesOptions() const;
    StlOptions stlOptions() const;
    VrmlOptions vrmlOptions() const;
    PdfOptions pdfOptions() const;
    TiffOptions tiffOptions() const;

private:
    std::map<std::int32_t, bool> m_toggles;
    std::map<std::int32_t, std::int32_t> m_integers;
    std::map<std::int32_t, double> m_decimals;
    std::map<std::int32_t, Text> m_textLists;
};

} // namespace zn::zentrel
