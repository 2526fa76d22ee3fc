#pragma once

#include "addin/pages/frame/Page.h"

class QCheckBox;
class QGroupBox;

namespace zn {

class ThemePathBox;
class ViewPicker;

/// What tells the two twins apart.
struct ThemeTemplate {
    int titleNumber;
    const char16_t* title;
    const char16_t* pathVariable; ///< folder of the theme with "theme.xml" behind it
    const char16_t*
        checksVariable; ///< bits: 1 user may change the path, 2 primary views, 4 3D views, 8 user may change views
    const char16_t* viewsVariable; ///< bits of the chosen primary views
};

/// A sub-page of the conversion settings: theme and views of a 3D PDF.
class ThemeTemplateDlg : public Page {
public:
    ~ThemeTemplateDlg() override;

    void load(const ObjectRef& task) override;
    void save(const ObjectRef& task) override;

    /// Whether nothing of a document would be published.
    bool hasNoViews() const;

protected:
    /// `texts` outlives the page.
    ThemeTemplateDlg(PageEnvironment& environment, QWidget* parent, const std::shared_ptr<IArkVault>& vault,
        const ThemeTemplate& texts, bool launch);

private:
    QGroupBox* makeThemeBox(const std::shared_ptr<IArkVault>& vault);
    QGroupBox* makeViewsBox();
    void primaryViewsClicked();

    const ThemeTemplate& m_texts;
    const bool m_launch;

    ThemePathBox* m_path = nullptr;
    QCheckBox* m_allowTheme = nullptr;
    QCheckBox* m_views3d = nullptr;
    QCheckBox* m_primaryViews = nullptr;
    QCheckBox* m_allowViews = nullptr;
    ViewPicker* m_picker = nullptr;
};

} // namespace zn
