#include "addin/pages/conversion/ThemeTemplateDlg.h"

#include "addin/pages/conversion/ExampleLine.h"
#include "addin/pages/conversion/ThemePathBox.h"
#include "addin/pages/conversion/ViewPicker.h"
#include "addin/variables/LaunchFreedom.h"
#include "addin/variables/TaskVariables.h"
#include "qtglue/Texts.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace zn {

namespace {

/// The titles of the twins' boxes are 301 and 302.
enum Control : int {
    PathLabel = 303,
    PathEdit = 304,
    PathMenu = 305,
    Example = 306,
    AllowTheme = 307,
    ViewsBox = 308,
    Views3d = 309,
    PrimaryViews = 310,
    AllowViews = 311,
    FirstView = 321
};

/// The picture buttons are in a group of their own and in that of the views.
enum Group : int { PictureGroup = 1, ViewsGroup = 2, ThemeGroup = 4 };

constexpr std::int32_t primaryViewsWanted = 2;
constexpr std::int32_t views3dWanted = 4;

constexpr TextView themeFile = u"theme.xml";
constexpr const char16_t* section = u"AsmPartTemplateDlg";
constexpr int firstToolTip = 501;

Text withoutThemeFile(Text path)
{
    for (std::size_t at = path.find(themeFile); at != Text::npos; at = path.find(themeFile, at))
        path.erase(at, themeFile.size());
    return path;
}

Text withThemeFile(const QString& folder)
{
    Text path = typed(folder);
    while (!path.empty() && QChar(path.back()).isSpace())
        path.pop_back();
    if (!path.empty() && path.back() != u'\\')
        path += u'\\';
    return path.append(themeFile);
}

} // namespace

ThemeTemplateDlg::ThemeTemplateDlg(PageEnvironment& environment, QWidget* parent,
    const std::shared_ptr<IArkVault>& vault, const ThemeTemplate& texts, bool launch)
    : Page(environment, parent, section)
    , m_texts(texts)
    , m_launch(launch)
{
    auto* whole = new QVBoxLayout(this);
    QGroupBox* themeBox = makeThemeBox(vault);
    QGroupBox* viewsBox = makeViewsBox();
    whole->addWidget(themeBox);
    whole->addWidget(viewsBox);
    whole->addStretch();
    mbInitLexWnd();
    mvAddControl(ThemeGroup, themeBox);
    mvAddControl(ViewsGroup, viewsBox);
    mvAddControl(PictureGroup, m_picker);

    for (QCheckBox* box : {m_allowTheme, m_views3d, m_allowViews})
        box->setChecked(true);
    if (launch) {
        mbShowCtrl(AllowTheme, false);
        mbShowCtrl(AllowViews, false);
    }
    connect(m_primaryViews, &QCheckBox::toggled, this, [this] { primaryViewsClicked(); });
    primaryViewsClicked();
}

ThemeTemplateDlg::~ThemeTemplateDlg() = default;

QGroupBox* ThemeTemplateDlg::makeThemeBox(const std::shared_ptr<IArkVault>& vault)
{
    auto* box = control<QGroupBox>(m_texts.titleNumber, "themeBox", m_texts.title);
    auto* label = control<QLabel>(PathLabel, "themePathLabel", u"3D PDF &Theme path:");
    auto* place = control<QWidget>(PathEdit, "themePath");
    m_path = new ThemePathBox(environment(), vault, place);
    auto* menu = control<QToolButton>(PathMenu, "themePathMenu", u">");
    auto* example = control<ExampleLine>(Example, "themeExample");
    m_path->attach(menu, example);
    m_allowTheme = control<QCheckBox>(AllowTheme, "allowTheme", u"Allow the user to c&hange the theme path");
    label->setBuddy(place);
    menu->setAccessibleName(ts(620, u"Insert a part of the path"));

    auto* rows = new QGridLayout(box);
    rows->addWidget(label, 0, 0, 1, 2);
    rows->addWidget(place, 1, 0);
    rows->addWidget(menu, 1, 1, Qt::AlignTop);
    rows->addWidget(example, 2, 0, 1, 2);
    rows->addWidget(m_allowTheme, 3, 0, 1, 2);
    return box;
}

QGroupBox* ThemeTemplateDlg::makeViewsBox()
{
    auto* box = control<QGroupBox>(ViewsBox, "viewsBox", u"Select Views to include:");
    m_views3d = control<QCheckBox>(Views3d, "views3d", u"&3D Views");
    m_primaryViews = control<QCheckBox>(PrimaryViews, "primaryViews", u"&Primary Views");
    m_picker = new ViewPicker(this);
    m_picker->setObjectName("viewPicker");
    for (std::size_t row = 0; row < primaryViewCount; ++row) {
        const int number = static_cast<int>(row);
        QToolButton* button = m_picker->button(row);
        registerControl(FirstView + number, button, primaryViews[row].role, primaryViews[row].name);
        mbAddToolTip(FirstView + number, environment().text(firstToolTip + number, u"View", section));
    }
    m_allowViews = control<QCheckBox>(AllowViews, "allowViews", u"Allow the &user to change this setting");

    auto* rows = new QVBoxLayout(box);
    for (QWidget* row : std::initializer_list<QWidget*>{m_views3d, m_primaryViews, m_picker, m_allowViews})
        rows->addWidget(row);
    return box;
}

void ThemeTemplateDlg::primaryViewsClicked()
{
    if (!m_primaryViews->isChecked())
        m_picker->choose(0);
    mvEnableGroup(PictureGroup, m_primaryViews->isChecked());
}

void ThemeTemplateDlg::load(const ObjectRef& task)
{
    if (const std::optional<Text> path = readText(task, m_texts.pathVariable))
        m_path->setText(withoutThemeFile(*path));
    const std::optional<std::int32_t> stored = readInteger(task, m_texts.checksVariable);
    if (stored) {
        m_allowTheme->setChecked(*stored & userMayChangeTheme);
        m_primaryViews->setChecked(*stored & primaryViewsWanted);
        m_views3d->setChecked(*stored & views3dWanted);
        m_allowViews->setChecked(*stored & userMayChangeViews);
    }
    if (m_launch && (m_allowTheme->isChecked() || m_allowViews->isChecked())) {
        mvShowGroup(ThemeGroup, m_allowTheme->isChecked());
        mvShowGroup(ViewsGroup, m_allowViews->isChecked());
    }
    if (const std::optional<std::int32_t> views = readInteger(task, m_texts.viewsVariable))
        m_picker->choose(*views);
    primaryViewsClicked();
}

void ThemeTemplateDlg::save(const ObjectRef& task)
{
    writeVariable(task, m_texts.pathVariable, withThemeFile(shown(m_path->text())));
    std::int32_t checks = 0;
    checks |= m_allowTheme->isChecked() ? userMayChangeTheme : 0;
    checks |= m_views3d->isChecked() ? views3dWanted : 0;
    checks |= m_primaryViews->isChecked() ? primaryViewsWanted : 0;
    checks |= m_allowViews->isChecked() ? userMayChangeViews : 0;
    writeVariable(task, m_texts.checksVariable, checks);
    writeVariable(task, m_texts.viewsVariable, m_picker->chosen());
}

bool ThemeTemplateDlg::hasNoViews() const
{
    if (m_primaryViews->isChecked())
        return m_picker->chosen() == 0;
    return !m_views3d->isChecked();
}

} // namespace zn
