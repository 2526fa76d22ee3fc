#include "tests/support/pages/Person.h"

#include <gtest/gtest.h>
#include <QApplication>

namespace zn::test {

namespace {

Answers::Answer pressButton(QMessageBox::StandardButton button)
{
    return [button](QWidget& modal) {
        auto* box = qobject_cast<QMessageBox*>(&modal);
        QAbstractButton* target = box ? box->button(button) : nullptr;
        if (target)
            target->click();
        else
            modal.close();
    };
}

std::vector<Answers::Answer> pressButtons(std::initializer_list<QMessageBox::StandardButton> buttons)
{
    std::vector<Answers::Answer> answers;
    for (const auto button : buttons)
        answers.push_back(pressButton(button));
    return answers;
}

} // namespace

Answers::Answers(std::vector<Answer> answers)
    : m_answers(std::move(answers))
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
    m_timer.start(1);
}

Answers::Answers(std::initializer_list<QMessageBox::StandardButton> buttons)
    : Answers(pressButtons(buttons))
{
}

Answers::~Answers() { EXPECT_TRUE(allUsed()) << m_shown.join(" | ").toStdString(); }

void Answers::look()
{
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || modal == m_dealtWith)
        return;
    m_dealtWith = modal;
    m_timer.start(1); // a new timer: this one stays silent until its answer returns, which may open a further window
    const auto* box = qobject_cast<QMessageBox*>(modal);
    m_shown << (box ? box->text() : modal->windowTitle());
    if (m_next < m_answers.size()) {
        m_answers[m_next++](*modal);
    } else {
        m_unexpected = true;
        modal->close();
    }
}

} // namespace zn::test
