#pragma once

#include <QWidget>

#include <filesystem>
#include <string>

namespace zn::test {

/// What a person finds in a shown window, as text that is read and compared: its title, its controls line by line from
/// the top and from the left within a line (the first of each line with "-"), with kind, object name, text, state and
/// hint; lists with their columns and rows; then the order in which Tab reaches the controls, and the shortcuts.
std::string outlineOf(QWidget& window);

/// Expects that the file holds this outline. A change that is meant is written into the files by ZN_WRITE_OUTLINES=1
/// and read in the diff.
void expectOutline(const std::string& outline, const std::filesystem::path& file);

} // namespace zn::test
