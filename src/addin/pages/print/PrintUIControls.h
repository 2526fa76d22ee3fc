#pragma once

/// Numbers of the print dialog's controls and of its texts, in the section "PrintUIDlg".
namespace zn::printUI {

inline constexpr const char16_t* section = u"PrintUIDlg";

enum Control : int {
    VersionLabel = 301,
    ReferencedVersion = 302,
    LatestVersion = 303,
    OrientationFrame = 304,
    Portrait = 305,
    Landscape = 306,
    PrinterLabel = 307,
    PrinterBox = 308,
    SizeLabel = 309,
    SizeBox = 310,
    CopiesLabel = 311,
    CopiesEdit = 312,
    Total = 313,
    PrintButton = 314,
    CancelButton = 315,
    HelpButton = 316,
    Tabs = 317,
};

enum Message : int {
    FilesTabText = 401,
    MarginsTabText = 402,
    TotalText = 403,
    UnsupportedText = 404,
    ReferencedTip = 405,
    LatestTip = 406,
    NoCommandText = 411,
    NoCommandTitle = 412,
    NoInstanceText = 413,
    NoTreeText = 414,
    NoFilesText = 415,
    NoPrinterText = 416,
    NoCopiesText = 417,
    NothingSelectedText = 418,
    TreeName = 419,
    TooManyCopiesText = 420,
};

/// Groups of controls.
enum Group : int { VersionGroup = 1 };

} // namespace zn::printUI
