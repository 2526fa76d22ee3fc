#pragma once

#include "zentrel/application/ScriptObject.h"
#include "zentrel/formats/PrintPages.h"

namespace zn::zentrel {

enum class PageOrientation : std::int32_t { Portrait = 1, Landscape = 2 };

/// How a document's pages lie on paper; margins are preferences of the application.
struct PageSettings {
    std::int32_t paper = 9; ///< a number of `printerPaper`; A4
    PageOrientation orientation = PageOrientation::Portrait;
    bool scaleToFit = true;
    double scalePercent = 100.0; ///< without `scaleToFit`: of the sheet's or the model's size
    PageTexts header;
    PageTexts footer;
};

/// "PageSetup" of a document.
class PageSetup : public ScriptObject {
public:
    Text typeName() const override { return u"PageSetup"; }

    const PageSettings& settings() const { return m_settings; }

protected:
    const MemberTable& members() const override;

private:
    Value getOrientation(Arguments&);
    Value putOrientation(Arguments& arguments);
    Value getPaper(Arguments&);
    Value putPaper(Arguments& arguments);
    Value getScaleToFit(Arguments&);
    Value putScaleToFit(Arguments& arguments);
    Value getScale(Arguments&);
    Value putScale(Arguments& arguments);
    template <auto Texts> Value setTexts(Arguments& arguments);

    PageSettings m_settings;
};

} // namespace zn::zentrel
