#include "addin/pages/frame/LexWnd.h"

#include "qtglue/PageInput.h"
#include "qtglue/Texts.h"

#include <QLabel>
#include <QTimer>

namespace zn {

namespace {

constexpr const char16_t* productFile = u"ZNTaskAddIn";

/// The default string file as long as this lives.
class DefaultFile {
public:
    explicit DefaultFile(lexmgr::Library& library)
        : m_library(library)
    {
        m_library.gvPushDefaultFile(productFile);
    }
    DefaultFile(const DefaultFile&) = delete;
    DefaultFile& operator=(const DefaultFile&) = delete;
    ~DefaultFile() { m_library.gvPopDefaultFile(); }

private:
    lexmgr::Library& m_library;
};

QString spoken(QString label)
{
    label.remove(u'&');
    while (label.endsWith(u':') || label.endsWith(u' '))
        label.chop(1);
    return label;
}

} // namespace

LexWnd::LexWnd(PageEnvironment& environment, QWidget& window, const char16_t* name)
    : m_environment(environment)
    , m_window(window)
    , m_name(name)
    , m_lex(environment.lex().makeWindow())
{
    keepInputForPages(window);
}

LexWnd::~LexWnd() = default;

void LexWnd::registerControl(int number, QWidget* widget, const char* role, const char16_t* text)
{
    widget->setObjectName(QLatin1String(role));
    m_lex->registerControl(number, widget, text);
}

void LexWnd::mbInitLexWnd(const char16_t* title)
{
    const DefaultFile file(m_environment.lex());
    m_lex->mbInitLexWnd(&m_window, m_name, title);
    for (QLabel* label : m_window.findChildren<QLabel*>()) {
        QWidget* buddy = label->buddy();
        if (buddy && buddy->accessibleName().isEmpty())
            buddy->setAccessibleName(spoken(label->text()));
    }
    tellProblems();
}

/// Says what was wrong with the string files, when the window has come up.
void LexWnd::tellProblems()
{
    for (const Text& problem : m_environment.lex().takeProblems()) {
        QTimer::singleShot(0, &m_window, [this, problem] { inSlot([&] { tell(shown(problem)); }); });
    }
}

void LexWnd::mbAddToolTip(int number, const QString& text) { m_lex->mbAddToolTip(number, typed(text)); }

void LexWnd::mzbShowHelp(const char16_t* topic) { m_environment.lex().mzbShowHelp(&m_window, topic, productFile); }

} // namespace zn
