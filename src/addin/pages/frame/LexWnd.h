#pragma once

#include "addin/libraries/lexmgr/LexMgr.h"
#include "addin/pages/frame/PageEnvironment.h"

#include <QWidget>

namespace zn {

/// What pages and dialogs have in common: translated controls, groups of controls, tool tips.
///
/// A window makes its controls in its constructor, each with its number (the string number of its text in the
/// section that bears the window's name), its role as object name, and its English text; then it calls `mbInitLexWnd`
/// once, which replaces the texts by the language's. Group numbers are the window's own.
class LexWnd {
public:
    LexWnd(const LexWnd&) = delete;
    LexWnd& operator=(const LexWnd&) = delete;

protected:
    /// `name` is the section of the window's texts, such as "MenuCommandDlg".
    LexWnd(PageEnvironment& environment, QWidget& window, const char16_t* name);
    ~LexWnd();

    PageEnvironment& environment() const { return m_environment; }

    // As `MessageBoxes` has them, over this window.
    MessageBoxes& messages() const { return m_environment.messages(); }
    void tell(const QString& sentence, const QString& title = {}) { messages().tell(&m_window, sentence, title); }
    bool ask(const QString& question, const QString& title = {}) { return messages().ask(&m_window, question, title); }
    template <class Work> void inSlot(Work&& work) noexcept { messages().inSlot(&m_window, work); }

    /// Makes a control. `text` is the text of a label, button or box; for other controls it is what a screen reader
    /// says, and may be left empty where a label with this control as its buddy says it.
    template <class Control> Control* control(int number, const char* role, const char16_t* text = u"")
    {
        auto* made = new Control(&m_window);
        registerControl(number, made, role, text);
        return made;
    }
    /// Makes a control known that exists already.
    void registerControl(int number, QWidget* widget, const char* role, const char16_t* text = u"");

    /// Looks all texts up. `title` is the window's English title; empty for a page. Afterwards a control whose label
    /// is its buddy bears the label's text as its accessible name.
    void mbInitLexWnd(const char16_t* title = u"");

    void mvAddControl(int group, int number) { m_lex->mvAddControl(group, number); }
    void mvAddControl(int group, QWidget* widget) { m_lex->mvAddControl(group, widget); }
    void mvShowGroup(int group, bool show)
    {
        m_lex->mvShowGroup(group, show ? lexmgr::showNormal : lexmgr::showHidden);
    }
    void mvEnableGroup(int group, bool enable) { m_lex->mvEnableGroup(group, enable); }
    void mbShowCtrl(int number, bool show)
    {
        m_lex->mbShowCtrl(number, show ? lexmgr::showNormal : lexmgr::showHidden);
    }
    void mbEnableCtrl(int number, bool enable) { m_lex->mbEnableCtrl(number, enable); }
    void mbAddToolTip(int number, const QString& text);
    /// Opens the help at a topic of the product's help file.
    void mzbShowHelp(const char16_t* topic);

    /// A text of the section "TS" of the product's string file.
    QString ts(int number, const char16_t* defaultText) const { return m_environment.text(number, defaultText); }

private:
    void tellProblems();

    PageEnvironment& m_environment;
    QWidget& m_window;
    const char16_t* m_name;
    std::unique_ptr<lexmgr::Window> m_lex;
};

} // namespace zn
