#pragma once

#include "addin/flows/PageFactory.h"
#include "addin/pages/frame/PageEnvironment.h"

namespace zn {

/// All pages and dialogs of the product. The toolkit's application object must exist.
class Pages final : public PageFactory {
public:
    /// `platform` outlives the object. Raises `StatusError` when a closed library is missing.
    explicit Pages(const Platform& platform);

    bool isWindow(std::int32_t handle) const override;
    Text text(std::int32_t number, const char16_t* defaultText) override;
    void tell(std::int32_t window, const Text& sentence) override;
    void setAttended(bool attended) override { m_environment.messages().setAttended(attended); }
    Text takeUnspoken() override;

    std::unique_ptr<MenuCommandPage> makeMenuCommandPage(const PageSetting& setting) override;
    std::unique_ptr<ConversionPage> makeConversionPage(const PageSetting& setting, bool launch) override;
    std::unique_ptr<TaskPage> makeOutputFileDetailsPage(
        const PageSetting& setting, ConversionPage& conversion) override;
    std::unique_ptr<TaskPage> makeFileDetailsPage(const PageSetting& setting, bool finished) override;
    std::unique_ptr<TaskPage> makePage(PageName name, const PageSetting& setting) override;

    bool askSelection(const PageSetting& setting, const Text& taskName, ArkSelection& selection) override;
    bool showPrintDialog(
        const std::shared_ptr<IArkVault>& vault, ArkCmd* cmd, ArkSelection& selection, bool show) override;

    PageEnvironment& environment() { return m_environment; }

private:
    PageEnvironment m_environment;
};

} // namespace zn
