#include "addin/pages/options/AdvancedConvOpFrame.h"

#include "addin/pages/options/ConvOpDlg.h"
#include "base/Format.h"
#include "qtglue/Texts.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace zn {

namespace {

enum Control : int { Ok = 1, Cancel = 2, Help = 9, ResetAll = 301 };

constexpr int leastWidth = 480; // pixels at 96 dots per inch

/// The format's name without its file patterns.
QString nameOf(const Text& formatLabel) { return shown(formatLabel).section(u'(', 0, 0).trimmed(); }

} // namespace

AdvancedConvOpFrame::AdvancedConvOpFrame(PageEnvironment& environment, QWidget* parent, const Text& formatLabel,
    const char16_t* helpTopic, std::unique_ptr<CConvOpDlg> child)
    : Dialog(environment, parent, u"AdvancedConvOpDlg")
    , m_child(std::move(child))
{
    setObjectName("advancedConvOpDlg");
    QWidget* options = m_child ? m_child->CreateChild(this) : nullptr;
    m_resetAll = control<QPushButton>(ResetAll, "resetAll", u"&Reset All");
    m_ok = control<QPushButton>(Ok, "ok", u"OK");
    m_cancel = control<QPushButton>(Cancel, "cancel", u"Cancel");
    m_help = control<QPushButton>(Help, "help", u"Help");
    placeControls(options);

    connect(m_resetAll, &QPushButton::clicked, this, [this] { resetAll(); });
    connect(m_ok, &QPushButton::clicked, this, [this] { onOK(); });
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_help, &QPushButton::clicked, this,
        [this, helpTopic] { inSlot([this, helpTopic] { mzbShowHelp(helpTopic); }); });
    mbInitLexWnd();
    setWindowTitle(shown(formatText(ts(22, u"Advanced Scripting Options (%s)").toUtf8(), typed(nameOf(formatLabel)))));
}

AdvancedConvOpFrame::~AdvancedConvOpFrame() = default;

void AdvancedConvOpFrame::placeControls(QWidget* child)
{
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_resetAll);
    buttons->addStretch();
    for (QPushButton* button : {m_ok, m_cancel, m_help})
        buttons->addWidget(button);
    for (QPushButton* button : {m_resetAll, m_cancel, m_help})
        button->setAutoDefault(false); // Enter is OK wherever the focus stands
    m_ok->setDefault(true);

    auto* rows = new QVBoxLayout(this);
    if (child)
        rows->addWidget(child);
    rows->addStretch();
    rows->addSpacing(rows->spacing());
    rows->addLayout(buttons);
    // Not the window's own minimum, which would replace that of its contents.
    const QMargins margins = rows->contentsMargins();
    rows->addStrut(environment().lex().dpi().scaleX(leastWidth) - margins.left() - margins.right());
}

void AdvancedConvOpFrame::resetAll()
{
    inSlot([this] {
        if (m_child)
            m_child->LoadOptions(true);
    });
}

void AdvancedConvOpFrame::onOK()
{
    inSlot([this] {
        if (m_child)
            m_child->OnOK();
    });
    accept();
}

} // namespace zn
