#include "addin/pages/frame/MessageBoxes.h"

#include "addin/installation/ErrorTexts.h"
#include "addin/pages/frame/Strings.h"
#include "base/Status.h"

#include <QApplication>
#include <QMessageBox>

namespace zn {

namespace {

const char* const productName = "ZENTREL Task Add-in";

/// Where sentences are kept that found nobody: with the application, so that the host finds them, too.
const char* const unspokenProperty = "unspoken";

QString unspoken() { return qApp->property(unspokenProperty).toString(); }

/// Where the sentences of status codes are looked up; null before the library is loaded.
lexmgr::Library*& strings()
{
    static lexmgr::Library* library = nullptr;
    return library;
}

QString titleOr(const QString& title) { return title.isEmpty() ? QString::fromLatin1(productName) : title; }

void keep(const QString& sentence)
{
    const QString before = unspoken();
    qApp->setProperty(unspokenProperty, before.isEmpty() ? sentence : before + QStringLiteral(" ") + sentence);
}

QString sentenceOf(Status status) { return shown(errorText(status, strings())); }

QString currentSentence()
{
    try {
        throw;
    } catch (const StatusError& error) {
        const QString sentence = QString::fromUtf8(error.what());
        return sentence.isEmpty() ? sentenceOf(error.status()) : sentence;
    } catch (...) {
        return sentenceOf(currentExceptionStatus());
    }
}

} // namespace

void speakBy(lexmgr::Library* library) { strings() = library; }

bool attended() { return !qApp->property("unattended").toBool(); }

QString takeUnspoken()
{
    const QString sentences = unspoken();
    qApp->setProperty(unspokenProperty, QVariant());
    return sentences;
}

void tell(QWidget* parent, const QString& sentence, const QString& title)
{
    if (!attended())
        return keep(sentence);
    QMessageBox box(QMessageBox::Warning, titleOr(title), sentence, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool ask(QWidget* parent, const QString& question, const QString& title)
{
    if (!attended()) {
        keep(question);
        return false;
    }
    QMessageBox box(QMessageBox::Question, titleOr(title), question, QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void tellCurrentFailure(QWidget* parent, const QString& title) noexcept
{
    try {
        tell(parent, currentSentence(), title);
    } catch (...) {
        // Not even the sentence could be made: memory is exhausted, and a box would not open either.
        qCritical("A window's failure couldn't be shown.");
    }
}

} // namespace zn
