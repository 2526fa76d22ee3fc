#pragma once

#include "addin/variables/FormatOptions.h"
#include "base/Object.h"

#include <map>
#include <QPointer>
#include <vector>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QWidget;

namespace zn {

class OptionWindow;
class PageEnvironment;

/// One setting on its way between a dialog and the task's variables.
struct OptionSlot {
    ValueType type;      ///< Int32 or Boolean
    std::int32_t* value; ///< the dialog's member; booleans are 0 or 1
};

/// The settings of a dialog by the names of their variables, in the order of the names.
using OptionMap = std::map<TextView, OptionSlot>;

/// One row of a list: what it stores and what it shows.
struct ListRow {
    int stringNumber; ///< of the label, in the section "TS"; 0 for a label that is the same in every language
    const char16_t* label;
    std::int32_t value;
};

enum class ListOrder { AsWritten, ByLabel };

/// The units of length of every format that has some.
inline constexpr ListRow unitRows[] = {
    {28, u"Millimeters", 0},
    {29, u"Centimeters", 1},
    {30, u"Meters", 2},
    {31, u"Inches", 3},
    {32, u"Feets", 4},
};

/// What every option dialog is made of.
struct OptionSetting {
    PageEnvironment& environment; ///< outlives the dialog
    ObjectRef task;               ///< whose variables are the settings
    QWidget* parent;              ///< over which messages appear; null for none
};

/// Base of the dialogs with the settings of a conversion format. The object works without a window, which it gets by
/// `CreateChild`: then the settings go through the controls.
///
/// The settings start with the values of a new task. No setting is checked: the lists offer what is valid, and a
/// stored number that none of their rows has selects nothing and is written back as it was.
class CConvOpDlg {
public:
    CConvOpDlg(const CConvOpDlg&) = delete;
    CConvOpDlg& operator=(const CConvOpDlg&) = delete;
    /// Destroys the window, if it is still there.
    virtual ~CConvOpDlg();

    /// Makes the window, which shows the stored settings, as a child that isn't shown yet.
    QWidget* CreateChild(QWidget* parent);
    /// Takes the stored settings (an absent variable leaves its setting alone), or with `reset` those of the button
    /// "Reset All". A failure is shown in a message box and ends the reading.
    void LoadOptions(bool reset);
    /// Writes all settings and closes the window. False after a failure, which has ended the writing and was shown in
    /// a message box.
    bool OnOK();

protected:
    /// `options` outlives the dialog.
    CConvOpDlg(OptionSetting setting, const char16_t* lexName, std::span<const FormatOption> options);

    /// With `reset` gives each setting its default, then adds all settings to the map.
    virtual void RegisterOptions(OptionMap& map, bool reset);
    /// Brings the controls in line with the settings that the plain transfer doesn't reach.
    virtual void SyncControls() { }
    /// Puts the controls on the window.
    virtual void makeControls(OptionWindow& window) = 0;
    /// The window shows the stored settings for the first time.
    virtual void onOpened() { }

    static OptionSlot MakeOption(ValueType type, std::int32_t* value) { return {type, value}; }
    /// Selects the first row with that value; without one the selection stays.
    static void SelectByData(QComboBox& list, std::int32_t value);

    /// The setting of that variable, which must be in the dialog's table.
    std::int32_t& setting(TextView name);
    bool isOn(TextView name) { return setting(name) != 0; }

    // Controls that the plain transfer serves, each with its string number and object name.
    QCheckBox* addCheckBox(int number, const char* role, const char16_t* text, TextView name);
    /// Radio buttons that store their place among the texts, numbered from `number` on.
    QButtonGroup* addRadioButtons(
        int number, const std::vector<std::pair<const char*, const char16_t*>>& buttons, TextView name);
    /// Choosing a row stores its value at once. `rows` outlives the dialog; `spoken` is the list's name for a screen
    /// reader, where no label has the list as its buddy.
    QComboBox* addList(int number, const char* role, TextView name, std::span<const ListRow> rows,
        ListOrder order = ListOrder::AsWritten, const char16_t* spoken = u"");

    void addLabelledList(QFormLayout& fields, int number, const char16_t* text, QComboBox* list);

    /// Takes what the controls of the plain transfer show.
    void takeControls();

private:
    struct BoundBox {
        QCheckBox* box;
        std::int32_t* value;
    };
    struct BoundRadio {
        QButtonGroup* group;
        std::int32_t* value;
    };
    struct BoundList {
        QComboBox* list;
        std::int32_t* value;
        std::span<const ListRow> rows;
        ListOrder order;
    };

    void readOptions(bool reset);
    void showSettings();
    void fill(const BoundList& bound);
    QWidget* messageParent() const;

    OptionSetting m_setting;
    const char16_t* m_lexName;
    std::span<const FormatOption> m_options;
    std::vector<std::int32_t> m_values; ///< one for each option, never moved
    QPointer<OptionWindow> m_window;
    std::vector<BoundBox> m_boxes;
    std::vector<BoundRadio> m_radios;
    std::vector<BoundList> m_lists;
};

} // namespace zn
