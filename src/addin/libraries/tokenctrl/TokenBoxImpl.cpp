#include "addin/libraries/tokenctrl/TokenAccessible.h"
#include "addin/libraries/tokenctrl/TokenCtrl.h"
#include "addin/libraries/tokenctrl/TokenEdit.h"
#include "addin/libraries/tokenctrl/TokenMenu.h"
#include "addin/libraries/tokenctrl/TokenPatterns.h"

#include <memory>
#include <QPointer>
#include <QVBoxLayout>

namespace tokenctrl {

namespace {

/// A null text is an empty one.
QStringView viewOf(const char16_t* text) { return text ? QStringView(text) : QStringView(); }

class TokenBoxImpl final : public TokenBox {
public:
    TokenBoxImpl()
        : m_edit(new TokenEdit(m_patterns))
    {
        m_edit->onChanged = [this] {
            if (m_callback)
                m_callback->OnTokenTextChanged(*this);
        };
        m_edit->onMenuRequested = [this] { mbShowMenu(nullptr, nullptr); };
    }

    ~TokenBoxImpl() override { delete m_edit; }

    void mvDDX_Control(QWidget* place) override
    {
        if (!m_edit || !place)
            return;
        auto* layout = new QVBoxLayout(place);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(m_edit);
        m_edit->setObjectName(place->objectName() + QLatin1String("Edit"));
        place->setSizePolicy(m_edit->sizePolicy());
        place->setFocusPolicy(m_edit->focusPolicy()); // a label passes the focus on only to a place that takes it
        place->setFocusProxy(m_edit);
    }

    void mvAddPattern(const char16_t* pattern, bool isVariable, const char16_t* displayText, const char16_t* secondText,
        const char16_t* menuPath) override
    {
        m_patterns.add(viewOf(pattern), isVariable, viewOf(displayText), viewOf(secondText), viewOf(menuPath));
        if (m_menu)
            m_menu->deleteLater();
        m_menu.clear();
    }

    void mvRegisterCallback(TokenBoxCallback* callback) override { m_callback = callback; }

    void mvSetText(std::u16string_view text) override
    {
        if (m_edit)
            m_edit->setPlain(QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())));
    }

    std::u16string moGetText() const override { return m_edit ? m_edit->plainText().toStdU16String() : u""; }

    bool mbShowMenu(QWidget* button, TokenBoxParentMenu*) override
    {
        if (!m_edit || !m_edit->isEnabled() || m_edit->isReadOnly() || m_patterns.menu().empty())
            return false;
        if (!m_menu) {
            m_menu = new TokenMenu(
                m_patterns.menu(), [this](const QString& pattern) { insert(pattern); }, m_edit);
            m_menu->setObjectName(m_edit->objectName() + QLatin1String("Menu"));
        }
        const QWidget* under = button ? button : m_edit.data();
        m_menu->popup(under->mapToGlobal(QPoint(0, under->height())));
        return true;
    }

private:
    void insert(const QString& pattern)
    {
        m_edit->setFocus(Qt::PopupFocusReason);
        m_edit->insertPlain(pattern);
    }

    TokenPatterns m_patterns;
    QPointer<TokenEdit> m_edit; ///< belongs to its place once it has one
    QPointer<TokenMenu> m_menu;
    TokenBoxCallback* m_callback = nullptr;
};

} // namespace

} // namespace tokenctrl

extern "C" __attribute__((visibility("default"))) tokenctrl::TokenBox* tokenctrlTokenBox(std::int32_t)
{
    tokenctrl::installTokenAccessibility();
    return std::make_unique<tokenctrl::TokenBoxImpl>().release();
}
