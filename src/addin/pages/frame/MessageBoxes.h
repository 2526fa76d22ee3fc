#pragma once

#include <QString>

class QWidget;

namespace lexmgr {
class Library;
}

/// How pages speak: plain message boxes over the page's window.
///
/// A host that runs without a person says so by the application's boolean property "unattended". Then no box opens,
/// because nobody would close it: its sentence is kept in the application's property "unspoken", for the flow or the
/// host to hand it on.
namespace zn {

bool attended();
/// Looks the sentences of status codes up in this library from now on; null: they are English.
void speakBy(lexmgr::Library* library);
/// The sentences that found nobody since the last call, separated by blanks.
QString takeUnspoken();

/// Shows a sentence until the user closes it. `title` empty: the product's name.
void tell(QWidget* parent, const QString& sentence, const QString& title = {});
/// Asks a question with Yes and No. Anything but Yes, and nobody there, is false.
bool ask(QWidget* parent, const QString& question, const QString& title = {});
/// Tells what the exception now being handled means: its own sentence, or the text of its status. To be called inside
/// a `catch` block only.
void tellCurrentFailure(QWidget* parent, const QString& title = {}) noexcept;

/// Runs the work of a slot or an event handler. What it raises ends in a message box over `parent`: no exception may
/// pass through the toolkit.
template <class Work> void inSlot(QWidget* parent, Work&& work) noexcept
{
    try {
        work();
    } catch (...) {
        tellCurrentFailure(parent);
    }
}

} // namespace zn
