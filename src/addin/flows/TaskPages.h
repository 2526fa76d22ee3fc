#pragma once

#include "addin/flows/PageFactory.h"

#include <functional>
#include <vector>

namespace zn {

/// Where the add-in object gets its windows from, asked when the first is needed. Raises `StatusError` with a sentence
/// when there are none.
using PagesSource = std::function<std::shared_ptr<PageFactory>()>;

/// The pages that the add-in object owns: those of the task being set up or launched and of the run being looked at.
/// Empty pointers stand for pages that aren't open.
class TaskPages {
public:
    explicit TaskPages(PagesSource source);
    TaskPages(const TaskPages&) = delete;
    TaskPages& operator=(const TaskPages&) = delete;
    ~TaskPages();

    /// The windows' library; loaded at the first call.
    PageFactory& factory();
    /// Whether a person sees the windows from now on.
    void setAttended(bool attended);
    /// What pages would have told a person since the last call.
    Text takeUnspoken();
    /// Destroys all pages together, in the order of the members.
    void destroyAll();

    std::unique_ptr<TaskPage> script;
    std::unique_ptr<ConversionPage> conversionSettings;
    std::unique_ptr<TaskPage> fileCard;
    std::unique_ptr<TaskPage> outputFileDetails;
    std::unique_ptr<TaskPage> printer;
    std::unique_ptr<TaskPage> paperSize;
    std::unique_ptr<TaskPage> margins;
    std::unique_ptr<TaskPage> files;
    std::unique_ptr<TaskPage> fileDetails;
    std::unique_ptr<MenuCommandPage> menuCommand;

    /// Pages of earlier launches, which the host may still show: a new launch leaves them alone.
    std::vector<std::unique_ptr<ConversionPage>> earlierLaunches;

private:
    PagesSource m_source;
    bool m_attended = true;
    std::shared_ptr<PageFactory> m_factory;
};

/// A looked-up title of a page.
struct PageTitle {
    std::int32_t number;
    const char16_t* text;
};
namespace titles {
inline constexpr PageTitle menuCommand{601, u"Menu Command"};
inline constexpr PageTitle conversionSettings{602, u"Conversion Settings"};
inline constexpr PageTitle fileCard{603, u"File Card"};
inline constexpr PageTitle outputFileDetails{604, u"Output File Details"};
inline constexpr PageTitle printer{605, u"Printer"};
inline constexpr PageTitle paperSize{606, u"Paper Size and Orientation"};
inline constexpr PageTitle margins{607, u"Margins"};
inline constexpr PageTitle files{608, u"Files"};
inline constexpr PageTitle script{609, u"Script"};
inline constexpr PageTitle convertedFiles{610, u"Converted Files"};
inline constexpr PageTitle printedFiles{611, u"Printed Files"};
inline constexpr PageTitle selectedFiles{612, u"Selected Files"};
} // namespace titles

inline Text textOf(PageFactory& factory, const PageTitle& title) { return factory.text(title.number, title.text); }

} // namespace zn
