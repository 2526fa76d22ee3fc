#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace zn::test {

/// Windows appear on a screen of this program's own, which nobody sees, of the size of an ordinary one. Before the
/// application object is made.
inline void useOwnScreen()
{
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" ZN_SOURCE_DIR "/tests/support/windows/screen.json");
}

} // namespace zn::test
