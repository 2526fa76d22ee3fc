#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QtGlobal>
#include <QVariant>

namespace zn::test {

/// Windows appear on a screen of this program's own, which nobody sees, of the size of an ordinary one. Before the
/// application object is made.
inline void useOwnScreen()
{
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" ZN_SOURCE_DIR "/tests/support/windows/screen.json");
}

/// Nobody sits at that screen: what a window says goes to `takeUnspoken`, and no box waits for an answer.
inline void workUnattended() { qApp->setProperty("unattended", true); }

} // namespace zn::test
