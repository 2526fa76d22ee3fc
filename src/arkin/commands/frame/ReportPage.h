#pragma once

#include <string>
#include <vector>

namespace zn::arkin {

/// One line about an output or a file. All texts are UTF-8 and plain.
struct ReportedFile {
    std::string outcome; ///< "made", "failed" …
    std::string source;  ///< with the configuration or sheet
    std::string output;  ///< with its version; may be empty
    std::string sentence;
    std::string picture; ///< an element of HTML; may be empty
    double seconds = 0.0;
};

struct ReportedRun {
    std::string title;   ///< "Run 3 of 'Night'"
    std::string state;   ///< "finished, 2 of 6 failed"
    std::string details; ///< who, when, and the reported text
    bool wentWell = false;
    std::vector<ReportedFile> files;
    std::vector<std::string> messages; ///< that belong to none of the files
};

/// A page without scripts and without anything from elsewhere, light or dark as its reader likes it.
std::string reportPage(const std::string& heading, const std::vector<ReportedRun>& runs);

} // namespace zn::arkin
