#pragma once

#include "qtglue/Windows.h"

#include <QString>

namespace lexmgr {
class Library;
}

namespace zn {

/// How the pages of one add-in object speak: plain message boxes over the page's window. Where nobody sits at the
/// screen no box opens, because nobody would close it; its sentence is kept for the host.
class MessageBoxes {
public:
    /// Whether a person sees the windows. They do until told otherwise.
    void setAttended(bool attended) { m_attended = attended; }
    /// The sentences that found nobody since the last call, separated by blanks.
    QString takeUnspoken();
    /// Looks the sentences of status codes up in this library from now on; without one they are English.
    void speakBy(lexmgr::Library* library) { m_library = library; }

    /// Shows a sentence until the user closes it. `title` empty: the product's name.
    void tell(QWidget* parent, const QString& sentence, const QString& title = {});
    /// Asks a question with Yes and No. Anything but Yes, and nobody there, is false.
    bool ask(QWidget* parent, const QString& question, const QString& title = {});
    /// Tells what the exception now being handled means: its own sentence, or the text of its status. To be called
    /// inside a `catch` block only.
    void tellCurrentFailure(QWidget* parent, const QString& title = {}) noexcept;
    /// Runs the work of a slot or an event handler; what it raises is told.
    template <class Work> void inSlot(QWidget* parent, Work&& work) noexcept
    {
        guarded(work, [&]() noexcept { tellCurrentFailure(parent); });
    }

private:
    void keep(const QString& sentence);
    QString currentSentence() const;

    bool m_attended = true;
    QString m_unspoken;
    lexmgr::Library* m_library = nullptr;
};

} // namespace zn
