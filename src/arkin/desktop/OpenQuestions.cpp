#include "arkin/desktop/OpenQuestions.h"

#include <QGroupBox>
#include <QLabel>
#include <QStringList>

namespace zn::arkin {

namespace {

bool isOpen(const QWidget& control, const QWidget& page)
{
    return control.isEnabledTo(&page) && control.isVisibleTo(&page);
}

void note(QStringList& names, QString text)
{
    text.remove('&');
    while (text.endsWith(':'))
        text.chop(1);
    if (!text.isEmpty() && !names.contains(text))
        names << text;
}

} // namespace

std::string openQuestions(QWidget* page)
{
    QStringList names;
    if (!page)
        return {};
    for (const auto* group : page->findChildren<QGroupBox*>())
        if (isOpen(*group, *page))
            note(names, group->title());
    if (!names.isEmpty())
        return names.join(", ").toStdString();
    for (const auto* label : page->findChildren<QLabel*>())
        if (label->buddy() && isOpen(*label->buddy(), *page))
            note(names, label->text());
    return names.join(", ").toStdString();
}

} // namespace zn::arkin
