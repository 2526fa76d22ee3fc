#include "qtglue/Windows.h"

#include <QMessageBox>

namespace zn {

QWidget* windowOf(std::int32_t handle) { return handle == 0 ? nullptr : QWidget::find(static_cast<WId>(handle)); }

std::int32_t handleOf(const QWidget& widget) { return static_cast<std::int32_t>(widget.winId()); }

void showSentence(QWidget* parent, const QString& title, const QString& sentence)
{
    QMessageBox box(QMessageBox::Warning, title, sentence, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace zn
