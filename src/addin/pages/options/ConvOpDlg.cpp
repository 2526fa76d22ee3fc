#include "addin/pages/options/ConvOpDlg.h"

#include "addin/pages/frame/MessageBoxes.h"
#include "addin/pages/options/OptionWindow.h"
#include "addin/variables/TaskVariables.h"
#include "qtglue/Texts.h"

#include <algorithm>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QRadioButton>

namespace zn {

CConvOpDlg::CConvOpDlg(OptionSetting setting, const char16_t* lexName, std::span<const FormatOption> options)
    : m_setting(std::move(setting))
    , m_lexName(lexName)
    , m_options(options)
{
    for (const FormatOption& option : options)
        m_values.push_back(option.initial);
}

CConvOpDlg::~CConvOpDlg() { delete m_window.data(); }

QWidget* CConvOpDlg::CreateChild(QWidget* parent)
{
    m_window = new OptionWindow(m_setting.environment, parent, m_lexName);
    m_window->setObjectName(shown(m_lexName));
    makeControls(*m_window);
    LoadOptions(false);
    m_window->mbInitLexWnd();
    for (const BoundList& bound : m_lists)
        fill(bound);
    onOpened();
    return m_window;
}

void CConvOpDlg::LoadOptions(bool reset)
{
    try {
        readOptions(reset);
    } catch (...) {
        m_setting.environment.messages().tellCurrentFailure(messageParent());
    }
    if (m_window) {
        showSettings();
        SyncControls();
    }
}

void CConvOpDlg::readOptions(bool reset)
{
    OptionMap map;
    RegisterOptions(map, reset);
    if (reset)
        return;
    for (const auto& [name, slot] : map) {
        if (slot.type == ValueType::Boolean)
            *slot.value = readBoolean(m_setting.task, name).value_or(*slot.value != 0) ? 1 : 0;
        else
            *slot.value = readInteger(m_setting.task, name).value_or(*slot.value);
    }
}

bool CConvOpDlg::OnOK()
{
    bool written = true;
    try {
        if (m_window)
            takeControls();
        OptionMap map;
        RegisterOptions(map, false);
        for (const auto& [name, slot] : map)
            writeVariable(
                m_setting.task, name, slot.type == ValueType::Boolean ? Value(*slot.value > 0) : Value(*slot.value));
    } catch (...) {
        written = false;
        m_setting.environment.messages().tellCurrentFailure(messageParent());
    }
    if (m_window)
        m_window->close();
    return written;
}

void CConvOpDlg::RegisterOptions(OptionMap& map, bool reset)
{
    for (std::size_t i = 0; i < m_options.size(); ++i) {
        if (reset)
            m_values[i] = m_options[i].reset;
        map.emplace(m_options[i].name, MakeOption(m_options[i].type, &m_values[i]));
    }
}

void CConvOpDlg::SelectByData(QComboBox& list, std::int32_t value)
{
    if (const int row = list.findData(value); row >= 0)
        list.setCurrentIndex(row);
}

std::int32_t& CConvOpDlg::setting(TextView name)
{
    const auto option = std::ranges::find(m_options, name, &FormatOption::name);
    return m_values.at(static_cast<std::size_t>(option - m_options.begin()));
}

QCheckBox* CConvOpDlg::addCheckBox(int number, const char* role, const char16_t* text, TextView name)
{
    auto* box = m_window->control<QCheckBox>(number, role, text);
    m_boxes.push_back({box, &setting(name)});
    return box;
}

QButtonGroup* CConvOpDlg::addRadioButtons(
    int number, const std::vector<std::pair<const char*, const char16_t*>>& buttons, TextView name)
{
    auto* group = new QButtonGroup(m_window);
    int place = 0;
    for (const auto& [role, text] : buttons) {
        group->addButton(m_window->control<QRadioButton>(number + place, role, text), place);
        ++place;
    }
    m_radios.push_back({group, &setting(name)});
    return group;
}

QComboBox* CConvOpDlg::addList(
    int number, const char* role, TextView name, std::span<const ListRow> rows, ListOrder order, const char16_t* spoken)
{
    auto* list = m_window->control<QComboBox>(number, role, spoken);
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents); // the rows come when the window has its size already
    std::int32_t* value = &setting(name);
    QObject::connect(list, &QComboBox::activated, list, [list, value](int row) {
        if (row >= 0)
            *value = list->itemData(row).toInt();
    });
    m_lists.push_back({list, value, rows, order});
    return list;
}

void CConvOpDlg::addLabelledList(QFormLayout& fields, int number, const char16_t* text, QComboBox* list)
{
    auto* label = m_window->control<QLabel>(number, (list->objectName() + "Label").toLatin1(), text);
    label->setBuddy(list);
    fields.addRow(label, list);
}

void CConvOpDlg::fill(const BoundList& bound)
{
    struct Entry {
        QString label;
        std::int32_t value;
    };
    std::vector<Entry> entries;
    for (const ListRow& row : bound.rows)
        entries.push_back({row.stringNumber ? m_window->ts(row.stringNumber, row.label) : shown(row.label), row.value});
    if (bound.order == ListOrder::ByLabel)
        std::ranges::stable_sort(
            entries, [](const Entry& a, const Entry& b) { return QString::localeAwareCompare(a.label, b.label) < 0; });
    for (const Entry& entry : entries)
        bound.list->addItem(entry.label, entry.value);
    bound.list->setCurrentIndex(-1); // the toolkit selects a first row by itself
    SelectByData(*bound.list, *bound.value);
}

void CConvOpDlg::showSettings()
{
    for (const BoundBox& bound : m_boxes)
        bound.box->setChecked(*bound.value != 0);
    for (const BoundRadio& bound : m_radios) {
        if (QAbstractButton* button = bound.group->button(*bound.value))
            button->setChecked(true);
    }
    for (const BoundList& bound : m_lists)
        SelectByData(*bound.list, *bound.value);
}

void CConvOpDlg::takeControls()
{
    for (const BoundBox& bound : m_boxes)
        *bound.value = bound.box->isChecked() ? 1 : 0;
    for (const BoundRadio& bound : m_radios) {
        if (const int place = bound.group->checkedId(); place >= 0)
            *bound.value = place;
    }
}

QWidget* CConvOpDlg::messageParent() const
{
    return m_window && m_window->isVisible() ? m_window.data() : m_setting.parent;
}

} // namespace zn
