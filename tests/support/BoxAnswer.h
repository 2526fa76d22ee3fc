#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <QTimer>

namespace zn::test {

/// Answers the message boxes that open while it lives, as a person does, and keeps what they said.
class BoxAnswer {
public:
    explicit BoxAnswer(QMessageBox::StandardButton button = QMessageBox::Ok)
    {
        QObject::connect(&m_look, &QTimer::timeout, &m_look, [this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box || !box->isVisible())
                return;
            said.append(box->text());
            titles.append(box->windowTitle());
            if (QAbstractButton* answer = box->button(button))
                answer->click();
            else
                box->reject();
        });
        m_look.start(1);
    }

    QStringList said;
    QStringList titles;

private:
    QTimer m_look;
};

} // namespace zn::test
