#pragma once

#include <QWidget>

#include <filesystem>

namespace lexmgr {

class Library;

/// The file of a topic below `folder` (a help file's pages), of its first page if there is no such topic, or empty if
/// the help isn't there.
std::filesystem::path helpPage(const std::filesystem::path& folder, const std::string& topic);

/// Shows a page in the help window that belongs to the window of `parent`, so that it can be read beside an open
/// dialog. One such window serves all topics.
void showHelpPage(Library& library, QWidget* parent, const std::filesystem::path& page);

} // namespace lexmgr
