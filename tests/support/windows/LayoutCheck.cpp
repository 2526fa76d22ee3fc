#include "tests/support/windows/LayoutCheck.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QSizeGrip>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>

#include <algorithm>
#include <map>

namespace zn::test {

namespace {

using Faults = std::vector<std::string>;

QString textOf(const QWidget& control)
{
    if (const auto* label = qobject_cast<const QLabel*>(&control))
        return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
        return button->text();
    if (const auto* box = qobject_cast<const QGroupBox*>(&control))
        return box->title();
    return {};
}

std::string nameOf(const QWidget& control)
{
    const QString name = control.objectName().isEmpty() ? QString("without a name") : control.objectName();
    const QString text = textOf(control).left(40);
    return (QString(control.metaObject()->className()) + " " + name + (text.isEmpty() ? "" : " \"" + text + "\""))
        .toStdString();
}

std::string sizeText(QSize size) { return std::to_string(size.width()) + "x" + std::to_string(size.height()); }

/// The toolkit's own parts of a control, which it lays out itself.
bool laysOutItself(const QWidget& control)
{
    return qobject_cast<const QComboBox*>(&control) || qobject_cast<const QAbstractSpinBox*>(&control)
        || qobject_cast<const QLineEdit*>(&control) || qobject_cast<const QTabBar*>(&control)
        || qobject_cast<const QAbstractScrollArea*>(&control);
}

/// Direct children that a person sees as controls of their own.
std::vector<const QWidget*> visibleChildren(const QWidget& parent)
{
    std::vector<const QWidget*> children;
    for (const QObject* child : parent.children()) {
        const auto* widget = qobject_cast<const QWidget*>(child);
        if (widget && widget->isVisible() && !widget->isWindow() && !qobject_cast<const QSizeGrip*>(widget)
            && !qobject_cast<const QMenu*>(widget))
            children.push_back(widget);
    }
    return children;
}

int widestWord(const QLabel& label)
{
    int widest = 0;
    for (const QString& word : label.text().split(' '))
        widest = std::max(widest, label.fontMetrics().horizontalAdvance(word));
    return widest;
}

int widthOfRow(const QComboBox& combo, int row)
{
    const int icon = combo.itemIcon(row).isNull() ? 0 : combo.iconSize().width() + 4;
    return icon + combo.fontMetrics().horizontalAdvance(combo.itemText(row));
}

/// A list that is as wide as its rows must show each of them whole, one of a fixed width at least the chosen one.
QSize neededByCombo(const QComboBox& combo)
{
    const int height = combo.minimumSizeHint().height();
    if (combo.isEditable() || combo.currentIndex() < 0)
        return {0, height};
    if (combo.sizeAdjustPolicy() != QComboBox::AdjustToMinimumContentsLengthWithIcon)
        return {combo.sizeHint().width(), height};
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    const int field
        = combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo).width();
    return {combo.width() - field + widthOfRow(combo, combo.currentIndex()), height};
}

QSize neededSize(const QWidget& control)
{
    if (const auto* label = qobject_cast<const QLabel*>(&control)) {
        if (label->text().isEmpty())
            return {};
        if (!label->wordWrap())
            return label->sizeHint();
        return {widestWord(*label), label->heightForWidth(label->width())};
    }
    if (qobject_cast<const QAbstractButton*>(&control))
        return control.sizeHint();
    if (const auto* combo = qobject_cast<const QComboBox*>(&control))
        return neededByCombo(*combo);
    if (const auto* edit = qobject_cast<const QLineEdit*>(&control)) {
        constexpr int characters = 4;
        return {characters * edit->fontMetrics().averageCharWidth(), edit->minimumSizeHint().height()};
    }
    if (qobject_cast<const QTextEdit*>(&control) || qobject_cast<const QPlainTextEdit*>(&control)) {
        constexpr int margins = 8;
        return {control.fontMetrics().averageCharWidth() * 8, control.fontMetrics().lineSpacing() + margins};
    }
    if (const auto* tabs = qobject_cast<const QTabBar*>(&control))
        return {tabs->count() == 0 ? 0 : tabs->tabRect(tabs->count() - 1).right() + 1, 0};
    return control.minimumSizeHint();
}

void checkSize(const QWidget& control, Faults& faults)
{
    const QSize needed = neededSize(control);
    if (needed.width() > control.width() || needed.height() > control.height())
        faults.push_back(nameOf(control) + " needs " + sizeText(needed) + " and has " + sizeText(control.size()));
}

void checkColumns(const QWidget& control, Faults& faults)
{
    const auto* header = qobject_cast<const QHeaderView*>(&control);
    if (!header || header->orientation() != Qt::Horizontal || !header->model())
        return;
    for (int column = 0; column < header->count(); ++column) {
        if (!header->isSectionHidden(column) && header->sectionSizeHint(column) > header->sectionSize(column))
            faults.push_back("The title of column " + std::to_string(column) + " \""
                + header->model()->headerData(column, Qt::Horizontal).toString().toStdString() + "\" needs "
                + std::to_string(header->sectionSizeHint(column)) + " and has "
                + std::to_string(header->sectionSize(column)));
    }
}

void checkPlace(const QWidget& parent, const QWidget& child, Faults& faults)
{
    if (!parent.rect().contains(child.geometry()))
        faults.push_back(nameOf(child) + " sticks out of " + nameOf(parent) + ", which has " + sizeText(parent.size()));
}

void checkOverlaps(const std::vector<const QWidget*>& siblings, Faults& faults)
{
    for (std::size_t i = 0; i < siblings.size(); ++i) {
        for (std::size_t j = i + 1; j < siblings.size(); ++j) {
            if (siblings[i]->geometry().intersects(siblings[j]->geometry()))
                faults.push_back(nameOf(*siblings[i]) + " overlaps " + nameOf(*siblings[j]));
        }
    }
}

void check(const QWidget& control, Faults& faults)
{
    checkSize(control, faults);
    checkColumns(control, faults);
    if (const auto* area = qobject_cast<const QScrollArea*>(&control)) {
        if (area->widget())
            check(*area->widget(), faults);
        return;
    }
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&control)) {
        for (const auto* header : view->findChildren<QHeaderView*>())
            checkColumns(*header, faults);
        return;
    }
    if (laysOutItself(control))
        return;
    const auto children = visibleChildren(control);
    // A tab widget lays its bar over the frame of the pages by a pixel or two.
    if (!qobject_cast<const QTabWidget*>(&control))
        checkOverlaps(children, faults);
    for (const QWidget* child : children) {
        checkPlace(control, *child, faults);
        check(*child, faults);
    }
}

bool isControl(const QWidget& widget)
{
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QComboBox*>(&widget)
        || qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QTextEdit*>(&widget)
        || qobject_cast<const QAbstractItemView*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget);
}

void checkNames(const QWidget& parent, Faults& faults)
{
    for (const QWidget* child : visibleChildren(parent)) {
        if (isControl(*child)) {
            if (child->objectName().isEmpty())
                faults.push_back(nameOf(*child) + " has no object name");
            if (textOf(*child).isEmpty() && child->accessibleName().isEmpty())
                faults.push_back(nameOf(*child) + " has no name for a screen reader");
        }
        if (!laysOutItself(*child))
            checkNames(*child, faults);
        else if (const auto* area = qobject_cast<const QScrollArea*>(child); area && area->widget())
            checkNames(*area->widget(), faults);
    }
}

/// The letters that Alt reaches, by the control that has each first.
void checkMnemonics(const QWidget& parent, std::map<QString, std::string>& taken, Faults& faults)
{
    for (const QWidget* child : visibleChildren(parent)) {
        const QString letter = QKeySequence::mnemonic(textOf(*child)).toString();
        if (!letter.isEmpty()) {
            const auto [first, fresh] = taken.emplace(letter, nameOf(*child));
            if (!fresh)
                faults.push_back(nameOf(*child) + " has the same key as " + first->second);
        }
        checkMnemonics(*child, taken, faults);
    }
}

} // namespace

Faults layoutFaults(const QWidget& window)
{
    Faults faults;
    check(window, faults);
    return faults;
}

Faults namingFaults(const QWidget& window)
{
    Faults faults;
    checkNames(window, faults);
    std::map<QString, std::string> taken;
    checkMnemonics(window, taken, faults);
    return faults;
}

} // namespace zn::test
