#pragma once

#include "contracts/host/ArkTask.h"
#include "contracts/host/ArkVault.h"
#include "platform/Platform.h"

#include <memory>

/// The border between the add-in's flows and the windows. The windows live in a shared library of their own, which the
/// add-in loads when it first needs one: a worker never loads a toolkit. Everything here is used on the host's user
/// interface thread. Failures are raised as `StatusError`.
namespace zn {

/// A property page as the flows see it. Its window is a child of the host's, and may go before this object does: then
/// every operation raises `E_POINTER`.
class TaskPage {
public:
    TaskPage() = default;
    TaskPage(const TaskPage&) = delete;
    TaskPage& operator=(const TaskPage&) = delete;
    /// Destroys the window, if it is still there.
    virtual ~TaskPage() = default;

    /// The handle of the page's window; 0 when it has gone.
    virtual std::int32_t window() const = 0;
    /// Takes the stored variables of a definition or a run. A variable that is absent leaves the page's default. What
    /// was read before a failure is shown.
    virtual void load(const ObjectRef& task) = 0;
    /// Whether the page accepts its values. A page that doesn't has told the user and has set the focus.
    virtual bool validate() = 0;
    /// Writes every variable of the page and stops at the first failure. False when the page refused its values, and
    /// told the user so.
    virtual bool save(const ObjectRef& task) = 0;
};

struct MenuChoice {
    bool show = false;
    Text title;
    Text description;
};

class MenuCommandPage : public TaskPage {
public:
    virtual MenuChoice choice() const = 0;
};

class ConversionPage : public TaskPage {
public:
    /// `load` for a launch. `selectedKinds` is a bit set: 4 assemblies, 8 parts, 16 anything else.
    virtual void loadForLaunch(const ObjectRef& instance, std::int32_t selectedKinds) = 0;
    /// Whether a launch leaves the user anything to decide. To be asked after `loadForLaunch`.
    virtual bool isPageNeeded() const = 0;
    /// The label of the chosen output format, such as "IGES (*.igs)".
    virtual Text formatLabel() const = 0;
    /// Its code, 0 for "<Prompt the user>".
    virtual std::int32_t formatCode() const = 0;
};

/// What every page is made of.
struct PageSetting {
    std::shared_ptr<IArkVault> vault;
    ObjectRef task; ///< the definition, or the run at launch and for its details
    TaskKind kind = TaskKind::Unknown;
    std::int32_t parentWindow = 0;
};

/// The pages that have nothing of their own beyond `TaskPage`.
enum class PageName { FileCard, Printer, PaperSize, Margins, Files, Script };

class PageFactory : public Object {
public:
    /// Whether the handle is a window of this process.
    virtual bool isWindow(std::int32_t handle) const = 0;
    /// A looked-up text of the section "TS" of the file "ZNTaskAddIn".
    virtual Text text(std::int32_t number, const char16_t* defaultText) = 0;
    /// Shows a sentence in a message box over the window.
    virtual void tell(std::int32_t window, const Text& sentence) = 0;
    /// Whether a person sees the windows from now on. If not, no message box opens.
    virtual void setAttended(bool attended) = 0;
    /// The sentences of the boxes that didn't open since the last call, separated by blanks.
    virtual Text takeUnspoken() = 0;

    virtual std::unique_ptr<MenuCommandPage> makeMenuCommandPage(const PageSetting& setting) = 0;
    virtual std::unique_ptr<ConversionPage> makeConversionPage(const PageSetting& setting, bool launch) = 0;
    /// `conversion` outlives the page, whose examples end with its format's extension.
    virtual std::unique_ptr<TaskPage> makeOutputFileDetailsPage(const PageSetting& setting, ConversionPage& conversion)
        = 0;
    virtual std::unique_ptr<TaskPage> makeFileDetailsPage(const PageSetting& setting, bool finished) = 0;
    virtual std::unique_ptr<TaskPage> makePage(PageName name, const PageSetting& setting) = 0;

    /// Lets the user pick the files and folders that a task works on. False when the user cancels. `selection` is
    /// rewritten only on true.
    virtual bool askSelection(const PageSetting& setting, const Text& taskName, ArkSelection& selection) = 0;
    /// The dialog of a print task, or the same without the user if `show` is false. False when the user cancels:
    /// nothing was written then.
    virtual bool showPrintDialog(
        const std::shared_ptr<IArkVault>& vault, ArkCmd* cmd, ArkSelection& selection, bool show)
        = 0;
};

/// The library's one export, under `makePageFactoryName`. `platform` outlives the factory. `*why` gets a sentence when
/// the result is negative: the toolkit's application object must exist, and the closed libraries must be found.
using MakePageFactoryFunction = Status (*)(const Platform* platform, std::shared_ptr<PageFactory>* factory, Text* why);
inline constexpr const char* makePageFactoryName = "makePageFactory";
inline constexpr const char* pagesLibraryName = "libZNTaskAddInPages.so";

} // namespace zn
