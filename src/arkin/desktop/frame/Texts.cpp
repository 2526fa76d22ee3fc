#include "arkin/desktop/frame/Texts.h"

#include "arkin/store/Codes.h"

#include <algorithm>
#include <QFontMetrics>
#include <QHeaderView>
#include <QScreen>
#include <QTreeView>
#include <QWidget>

namespace zn::arkin {

void tell(QWidget* parent, const QString& sentence) { zn::showSentence(parent, QStringLiteral("ARKIN"), sentence); }

void resizeByFont(QWidget& window, int letters, int lines)
{
    const QFontMetrics font = window.fontMetrics();
    window.resize(QSize(letters * font.averageCharWidth(), lines * font.lineSpacing())
                      .boundedTo(window.screen()->availableSize()));
}

void giveTitlesRoom(QTreeView& list)
{
    for (int column = 0; column < list.header()->count(); ++column)
        list.setColumnWidth(column, std::max(list.columnWidth(column), list.header()->sectionSizeHint(column)));
}

void tellCurrentFailure(QWidget* parent) noexcept
{
    try {
        tell(parent, shown(currentFailure().sentence));
    } catch (...) {
        qCritical("A window's failure couldn't be shown.");
    }
}

} // namespace zn::arkin
