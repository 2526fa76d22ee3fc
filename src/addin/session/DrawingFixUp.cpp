#include "addin/session/DrawingFixUp.h"

namespace zn {

namespace {

/// The application's preference that makes it keep the two texts in step itself.
constexpr std::int32_t keepsTextsInStep = 347;

} // namespace

Status fixUpDrawing(const ZnApplication& application, const ZnModel& drawing, bool regressionMode)
{
    if (!regressionMode || application.GetUserPreferenceToggle(keepsTextsInStep))
        return S_FALSE;
    for (const auto& sheet : drawing.GetViews()) {
        for (const DispatchRef& view : sheet) {
            if (!view)
                return E_POINTER;
            for (const DispatchRef& object : ZnModelView(view).GetMembers()) {
                const ZnViewMember member(object);
                // Texts of one length are left alone even if they differ.
                if (member.GetText1().size() != member.GetText2().size())
                    member.Update();
            }
        }
    }
    return S_OK;
}

} // namespace zn
