#include "addin/pages/conversion/OutputTemplateDlg.h"

#include "addin/variables/LaunchFreedom.h"
#include "addin/variables/TaskVariables.h"
#include "qtglue/Texts.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace zn {

namespace {

enum Control : int {
    OutputBox = 301,
    All = 302,
    LastActive = 303,
    Named = 304,
    Name = 305,
    AllowOutput = 306,
    FileBox = 307,
    OneFileEach = 308,
    SameFile = 309,
    AllowFiles = 310,
    BracketNote = 311
};

enum Group : int { OutputGroup = 1, FileGroup = 2 };

constexpr std::int32_t outputAll = 2;
constexpr std::int32_t outputLastActive = 4;
constexpr std::int32_t outputNamed = 8;
constexpr std::int32_t sameFile = 2;
constexpr std::int32_t oneFileEach = 4;

const char16_t* const allowText = u"Allow the user to &change this setting";
const char16_t* const allowFilesText = u"Allow the &user to change this setting";

/// In pixels, to where the text of a radio button begins.
int indentation(const QRadioButton& button)
{
    const QStyle& style = *button.style();
    return style.pixelMetric(QStyle::PM_ExclusiveIndicatorWidth)
        + style.pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
}

} // namespace

OutputTemplateDlg::OutputTemplateDlg(
    PageEnvironment& environment, QWidget* parent, const OutputTemplate& texts, bool launch)
    : Page(environment, parent, texts.lexName)
    , m_texts(texts)
    , m_launch(launch)
{
    auto* whole = new QVBoxLayout(this);
    QGroupBox* outputBox = makeOutputBox();
    QGroupBox* fileBox = makeFileBox();
    whole->addWidget(outputBox);
    whole->addWidget(fileBox);
    whole->addStretch();
    mbInitLexWnd();
    mvAddControl(OutputGroup, outputBox);
    mvAddControl(FileGroup, fileBox);

    m_all->setChecked(true);
    m_oneFileEach->setChecked(true);
    m_allowOutput->setChecked(true);
    m_allowFiles->setChecked(true);
    m_name->setText(ts(54, u"Default"));
    for (const QRadioButton* button : {m_all, m_lastActive, m_named})
        connect(button, &QRadioButton::toggled, this, [this] { inSlot([this] { refresh(); }); });
    connect(m_name, &QLineEdit::textChanged, this, [this] { inSlot([this] { refresh(); }); });
    refresh();
}

QGroupBox* OutputTemplateDlg::makeOutputBox()
{
    auto* box = control<QGroupBox>(OutputBox, "outputBox", m_texts.outputTitle);
    m_all = control<QRadioButton>(All, "all", m_texts.all);
    m_lastActive = control<QRadioButton>(LastActive, "lastActive", m_texts.lastActive);
    m_named = control<QRadioButton>(Named, "named", m_texts.named);
    m_name = control<QLineEdit>(Name, "name", u"Name with wildcards");
    m_bracketNote = control<QLabel>(BracketNote, "bracketNote",
        u"A name in square brackets stands for the task variable of that name, so a list of letters such as [ML] can't "
        u"be used here. Use * and ? instead.");
    m_bracketNote->setWordWrap(true);
    m_allowOutput = control<QCheckBox>(AllowOutput, "allowOutput", allowText);
    auto* below = new QHBoxLayout;
    below->addSpacing(indentation(*m_named));
    auto* name = new QVBoxLayout;
    name->addWidget(m_name);
    name->addWidget(m_bracketNote);
    below->addLayout(name);
    auto* rows = new QVBoxLayout(box);
    for (QWidget* row : std::initializer_list<QWidget*>{m_all, m_lastActive, m_named})
        rows->addWidget(row);
    rows->addLayout(below);
    rows->addWidget(m_allowOutput);
    return box;
}

QGroupBox* OutputTemplateDlg::makeFileBox()
{
    auto* box = control<QGroupBox>(FileBox, "fileBox", m_texts.fileTitle);
    m_oneFileEach = control<QRadioButton>(OneFileEach, "oneFileEach", m_texts.oneFileEach);
    m_sameFile = control<QRadioButton>(SameFile, "sameFile", m_texts.sameFile);
    m_allowFiles = control<QCheckBox>(AllowFiles, "allowFiles", allowFilesText);
    auto* rows = new QVBoxLayout(box);
    for (QWidget* row : std::initializer_list<QWidget*>{m_oneFileEach, m_sameFile, m_allowFiles})
        rows->addWidget(row);
    return box;
}

bool OutputTemplateDlg::offersGrouping() const
{
    return std::ranges::find(m_texts.groupingFormats, m_format) != m_texts.groupingFormats.end();
}

void OutputTemplateDlg::setFormat(std::int32_t code)
{
    m_format = code;
    refresh();
}

/// Takes no notice of what an administrator fixed: for a format that offers a choice of grouping, its buttons come
/// back at a launch, too. Administrators know the page that way.
void OutputTemplateDlg::refresh()
{
    mbEnableCtrl(Name, m_named->isChecked());
    mbShowCtrl(BracketNote, m_named->isChecked() && m_name->text().contains(u'['));
    mvShowGroup(FileGroup, offersGrouping());
    if (!offersGrouping())
        return;
    mvEnableGroup(FileGroup, !m_lastActive->isChecked());
    if (m_launch)
        mbShowCtrl(AllowFiles, false);
}

void OutputTemplateDlg::load(const ObjectRef& task)
{
    loadOutput(task);
    loadFiles(task);
    if (m_launch)
        hideWhatIsFixed();
    refresh();
}

void OutputTemplateDlg::loadOutput(const ObjectRef& task)
{
    const std::optional<std::int32_t> stored = readInteger(task, m_texts.outputVariable);
    if (stored) {
        QRadioButton* chosen = *stored & outputNamed ? m_named : *stored & outputLastActive ? m_lastActive : m_all;
        chosen->setChecked(true);
    }
    const std::int32_t bits = stored.value_or(userMayChange);
    m_allowOutput->setChecked(bits & userMayChange);
    if (bits & outputNamed) {
        if (const std::optional<Text> name = readText(task, m_texts.nameVariable))
            m_name->setText(shown(*name));
    }
}

void OutputTemplateDlg::loadFiles(const ObjectRef& task)
{
    const std::optional<std::int32_t> stored = readInteger(task, m_texts.fileVariable);
    if (stored)
        (*stored & sameFile ? m_sameFile : m_oneFileEach)->setChecked(true);
    m_allowFiles->setChecked(stored.value_or(userMayChange) & userMayChange);
}

void OutputTemplateDlg::hideWhatIsFixed()
{
    mbShowCtrl(AllowOutput, false);
    mbShowCtrl(AllowFiles, false);
    mvShowGroup(OutputGroup, m_allowOutput->isChecked());
    mvShowGroup(FileGroup, m_allowFiles->isChecked());
}

void OutputTemplateDlg::save(const ObjectRef& task)
{
    std::int32_t output = m_named->isChecked() ? outputNamed : m_all->isChecked() ? outputAll : outputLastActive;
    output |= m_allowOutput->isChecked() ? userMayChange : 0;
    writeVariable(task, m_texts.outputVariable, output);
    if (output & outputNamed)
        writeVariable(task, m_texts.nameVariable, typed(m_name->text()));

    const bool canShareFile = !(output & outputLastActive) && offersGrouping();
    std::int32_t files = canShareFile && m_sameFile->isChecked() ? sameFile : oneFileEach;
    files |= m_allowFiles->isChecked() ? userMayChange : 0;
    writeVariable(task, m_texts.fileVariable, files);
}

} // namespace zn
