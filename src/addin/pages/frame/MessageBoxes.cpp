#include "addin/pages/frame/MessageBoxes.h"

#include "addin/installation/ErrorTexts.h"
#include "base/Status.h"
#include "qtglue/Texts.h"

#include <QMessageBox>

#include <utility>

namespace zn {

namespace {

QString titleOr(const QString& title) { return title.isEmpty() ? QStringLiteral("ZENTREL Task Add-in") : title; }

} // namespace

QString MessageBoxes::takeUnspoken() { return std::exchange(m_unspoken, {}); }

void MessageBoxes::keep(const QString& sentence)
{
    m_unspoken += m_unspoken.isEmpty() ? sentence : QStringLiteral(" ") + sentence;
}

void MessageBoxes::tell(QWidget* parent, const QString& sentence, const QString& title)
{
    if (!m_attended)
        return keep(sentence);
    showSentence(parent, titleOr(title), sentence);
}

bool MessageBoxes::ask(QWidget* parent, const QString& question, const QString& title)
{
    if (!m_attended) {
        keep(question);
        return false;
    }
    QMessageBox box(QMessageBox::Question, titleOr(title), question, QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

QString MessageBoxes::currentSentence() const
{
    try {
        throw;
    } catch (const StatusError& error) {
        return *error.what() ? shown(error.what()) : shown(errorText(error.status(), m_library));
    } catch (...) {
        return shown(errorText(currentExceptionStatus(), m_library));
    }
}

void MessageBoxes::tellCurrentFailure(QWidget* parent, const QString& title) noexcept
{
    try {
        tell(parent, currentSentence(), title);
    } catch (...) {
        // Not even the sentence could be made: memory is exhausted, and a box would not open either.
        qCritical("A window's failure couldn't be shown.");
    }
}

} // namespace zn
