#include "tests/support/windows/Outline.h"

#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSpinBox>

#include <algorithm>
#include <vector>

namespace zn::test {

namespace {

QString quoted(QString text)
{
    return '"' + text.replace('\\', "\\\\").replace('\r', "\\r").replace('\n', "\\n").replace('\t', "\\t") + '"';
}

QString named(const char* kind, const QWidget& control, const QString& text)
{
    return QString(kind) + ' ' + control.objectName() + ' ' + quoted(text);
}

QString checkText(int state) { return state == Qt::Checked ? " on" : state == Qt::PartiallyChecked ? " half" : " off"; }

QString buttonLine(const QAbstractButton& button)
{
    const bool isBox = qobject_cast<const QCheckBox*>(&button) != nullptr;
    const bool isRadio = qobject_cast<const QRadioButton*>(&button) != nullptr;
    QString line = named(isBox ? "check" : isRadio ? "radio" : "button", button, button.text());
    if (button.isCheckable())
        line += button.isChecked() ? " on" : " off";
    if (const auto* push = qobject_cast<const QPushButton*>(&button))
        line += QString(push->isDefault() ? " default" : "") + (push->autoDefault() ? " by-enter" : "");
    return button.icon().isNull() ? line : line + " icon";
}

QString comboLine(const QComboBox& combo)
{
    QStringList items;
    for (int row = 0; row < combo.count(); ++row)
        items += quoted(combo.itemText(row)) + (combo.itemIcon(row).isNull() ? "" : " icon");
    return named(combo.isEditable() ? "combo-edit" : "combo", combo, combo.currentText()) + " of " + items.join(", ");
}

/// Rows below a parent, each indented by its depth.
void addRows(const QAbstractItemModel& model, const QModelIndex& parent, const QString& indent, QStringList& lines)
{
    constexpr int shownRows = 12;
    for (int row = 0; row < std::min(model.rowCount(parent), shownRows); ++row) {
        QString line = indent;
        for (int column = 0; column < model.columnCount(parent); ++column) {
            const QModelIndex index = model.index(row, column, parent);
            line += (column == 0 ? "" : " | ") + index.data().toString();
            if (const QVariant state = index.data(Qt::CheckStateRole); state.isValid())
                line += checkText(state.toInt());
            if (!index.data(Qt::DecorationRole).isNull())
                line += " icon";
        }
        lines += line;
        addRows(model, model.index(row, 0, parent), indent + "  ", lines);
    }
}

QString columnTitles(const QAbstractItemView& view)
{
    QStringList titles;
    for (const auto* header : view.findChildren<QHeaderView*>()) {
        for (int column = 0; header->isVisible() && column < header->count(); ++column)
            titles += view.model()->headerData(header->logicalIndex(column), header->orientation()).toString();
    }
    return titles.join(" | ");
}

/// The rows of a list below its line, empty for any other control.
QString rowsOf(const QWidget& control)
{
    QStringList lines{QString()};
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&control); view && view->model())
        addRows(*view->model(), {}, "        ", lines);
    return lines.join('\n');
}

/// A long text by its beginning.
QString beginning(const QString& text)
{
    constexpr int shownCharacters = 80;
    return text.size() <= shownCharacters ? text : text.left(shownCharacters) + "...";
}

/// Empty for what only holds others.
QString lineOf(const QWidget& control)
{
    if (const auto* label = qobject_cast<const QLabel*>(&control))
        return label->text().isEmpty() ? QString() : named("label", control, label->text());
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
        return buttonLine(*button);
    if (const auto* combo = qobject_cast<const QComboBox*>(&control))
        return comboLine(*combo);
    if (const auto* edit = qobject_cast<const QLineEdit*>(&control))
        return named("edit", control, edit->text()) + (edit->isReadOnly() ? " read-only" : "");
    if (const auto* spin = qobject_cast<const QSpinBox*>(&control))
        return named("spin", control, spin->text()) + QString(" %1 to %2").arg(spin->minimum()).arg(spin->maximum());
    if (const QVariant text = control.property("plainText"); text.isValid())
        return named("text", control, beginning(text.toString()))
            + (control.property("readOnly").toBool() ? " read-only" : "");
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&control))
        return named("list", control, view->model() ? columnTitles(*view) : QString());
    if (const auto* box = qobject_cast<const QGroupBox*>(&control))
        return named("group", control, box->title()) + (box->isCheckable() ? box->isChecked() ? " on" : " off" : "");
    return {};
}

QString stateOf(const QWidget& control)
{
    QString state;
    if (!control.isEnabled())
        state += " disabled";
    if (const QString name = control.accessibleName(); !name.isEmpty())
        state += " called " + quoted(name);
    if (const QString hint = control.toolTip(); !hint.isEmpty())
        state += " hint " + quoted(hint);
    if (const auto* label = qobject_cast<const QLabel*>(&control); label && label->buddy())
        state += " of " + label->buddy()->objectName();
    return state;
}

struct Shown {
    QRect place; ///< in the window
    QString line;
};

void collect(const QWidget& window, const QWidget& parent, std::vector<Shown>& found)
{
    for (const QObject* child : parent.children()) {
        const auto* control = qobject_cast<const QWidget*>(child);
        if (!control || !control->isVisible() || control->isWindow() || qobject_cast<const QScrollBar*>(control))
            continue;
        const QString line = lineOf(*control);
        if (!line.isEmpty()) {
            QRect place(control->mapTo(&window, QPoint()), control->size());
            if (qobject_cast<const QGroupBox*>(control))
                place.setHeight(control->fontMetrics().height()); // its title; what it holds stands below
            found.push_back({place, line + stateOf(*control) + rowsOf(*control)});
        }
        if (line.isEmpty() || qobject_cast<const QGroupBox*>(control))
            collect(window, *control, found);
    }
}

/// Those whose middle stands within the height of the first one's make a line.
std::string linesOf(std::vector<Shown> controls)
{
    std::stable_sort(controls.begin(), controls.end(),
        [](const Shown& one, const Shown& other) { return one.place.top() < other.place.top(); });
    std::string text;
    for (auto first = controls.begin(); first != controls.end();) {
        const int bottom = first->place.bottom();
        auto end = std::find_if(
            first, controls.end(), [bottom](const Shown& each) { return each.place.center().y() > bottom; });
        std::stable_sort(
            first, end, [](const Shown& one, const Shown& other) { return one.place.left() < other.place.left(); });
        for (const char* mark = "- "; first != end; ++first, mark = "  ")
            text += mark + first->line.toStdString() + '\n';
    }
    return text;
}

QString buttonText(const QWidget& control)
{
    const auto* button = qobject_cast<const QAbstractButton*>(&control);
    return button ? button->text() : QString();
}

std::string tabOrder(const QWidget& window)
{
    QStringList names;
    for (const QWidget* next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain()) {
        const bool reached = (next->focusPolicy() & Qt::TabFocus) != 0 && next->isEnabled() && next->isVisible();
        const QString name = next->objectName().isEmpty() ? buttonText(*next) : next->objectName();
        if (reached && window.isAncestorOf(next) && !next->focusProxy() && !name.isEmpty())
            names += name;
    }
    return "tab: " + names.join(" > ").toStdString() + '\n';
}

std::string shortcuts(const QWidget& window)
{
    std::string text;
    for (const auto* shortcut : window.findChildren<QShortcut*>())
        text += "key: " + shortcut->key().toString().toStdString()
            + (shortcut->context() == Qt::WidgetWithChildrenShortcut ? " within its control\n" : "\n");
    return text;
}

} // namespace

std::string outlineOf(QWidget& window)
{
    std::vector<Shown> controls;
    collect(window, window, controls);
    return quoted(window.windowTitle()).toStdString() + '\n' + linesOf(std::move(controls)) + tabOrder(window)
        + shortcuts(window);
}

void expectOutline(const std::string& outline, const std::filesystem::path& file)
{
    if (qEnvironmentVariableIsSet("ZN_WRITE_OUTLINES"))
        writeFile(file, outline);
    EXPECT_EQ(outline, readFile(file)) << file;
}

} // namespace zn::test
