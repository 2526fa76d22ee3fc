#include "addin/flows/SetupFlow.h"

namespace zn {

namespace {

/// What the add-in takes over of the task's commands; the host's bits.
constexpr std::int32_t taskFlags = 1 | 2 | 4 | 16;
/// What the host wants to see in a menu entry.
constexpr std::int32_t menuFlags = 0x4001;

/// One page of a kind: where the add-in object keeps it and how it is called.
struct PageRow {
    std::unique_ptr<TaskPage> TaskPages::*page;
    PageName name;
    PageTitle title;
};

const PageRow printPages[] = {
    {&TaskPages::printer, PageName::Printer, titles::printer},
    {&TaskPages::paperSize, PageName::PaperSize, titles::paperSize},
    {&TaskPages::margins, PageName::Margins, titles::margins},
    {&TaskPages::files, PageName::Files, titles::files},
};

/// The array for the host grows with the pages.
class PageArray {
public:
    PageArray(PageFactory& factory, ObjectRef callback)
        : m_factory(factory)
        , m_callback(std::move(callback))
    {
    }
    void add(const PageTitle& title, const TaskPage& page)
    {
        m_records.push_back({textOf(m_factory, title), page.window(), m_callback});
    }
    const std::vector<ArkTaskPage>& records() const { return m_records; }

private:
    PageFactory& m_factory;
    ObjectRef m_callback;
    std::vector<ArkTaskPage> m_records;
};

void buildConversionPages(TaskPages& pages, const PageSetting& setting, PageArray& array)
{
    PageFactory& factory = pages.factory();
    pages.conversionSettings = factory.makeConversionPage(setting, false);
    pages.conversionSettings->load(setting.task);
    pages.fileCard = factory.makePage(PageName::FileCard, setting);
    pages.fileCard->load(setting.task);
    pages.outputFileDetails = factory.makeOutputFileDetailsPage(setting, *pages.conversionSettings);
    pages.outputFileDetails->load(setting.task);
    array.add(titles::conversionSettings, *pages.conversionSettings);
    array.add(titles::fileCard, *pages.fileCard);
    array.add(titles::outputFileDetails, *pages.outputFileDetails);
}

void buildPrintPages(TaskPages& pages, const PageSetting& setting, PageArray& array)
{
    for (const PageRow& row : printPages) {
        auto& page = pages.*row.page;
        page = pages.factory().makePage(row.name, setting);
        page->load(setting.task);
        array.add(row.title, *page);
    }
}

void buildScriptPage(TaskPages& pages, const PageSetting& setting, PageArray& array)
{
    pages.script = pages.factory().makePage(PageName::Script, setting);
    pages.script->load(setting.task);
    array.add(titles::script, *pages.script);
}

void buildPages(TaskContext& context, IArkTaskProperties& properties, const PageSetting& setting, const ObjectRef& self)
{
    TaskPages& pages = context.pages;
    pages.destroyAll();
    pages.menuCommand = pages.factory().makeMenuCommandPage(setting);
    pages.menuCommand->load(setting.task);
    PageArray array(pages.factory(), self);
    array.add(titles::menuCommand, *pages.menuCommand);
    if (setting.kind == TaskKind::Conversion)
        buildConversionPages(pages, setting, array);
    else if (setting.kind == TaskKind::Printing)
        buildPrintPages(pages, setting, array);
    else
        buildScriptPage(pages, setting, array);
    checkStatus(properties.SetSetupPages(array.records()));
}

void refuse(ArkCmd& cmd, PageFactory& factory, const PageTitle& title)
{
    cmd.cancel = -1;
    cmd.text = textOf(factory, title);
}

void saveConversionPages(TaskPages& pages, const ObjectRef& task)
{
    if (!pages.conversionSettings || !pages.outputFileDetails)
        throw StatusError(E_UNEXPECTED, "The pages of the task have been closed.");
    pages.conversionSettings->save(task);
    if (pages.fileCard)
        pages.fileCard->save(task);
    pages.outputFileDetails->save(task);
}

/// False when a page refused: nothing of the pages is written then.
bool savePrintPages(TaskPages& pages, const ObjectRef& task, ArkCmd& cmd)
{
    for (const PageRow& row : printPages) {
        const auto& page = pages.*row.page;
        if (page && !page->validate()) {
            refuse(cmd, pages.factory(), row.title);
            return false;
        }
    }
    for (const PageRow& row : printPages) {
        if (const auto& page = pages.*row.page)
            page->save(task);
    }
    return true;
}

/// False when a page of the kind refused its values.
bool saveKindPages(TaskContext& context, const ObjectRef& task, ArkCmd& cmd)
{
    TaskPages& pages = context.pages;
    if (context.kind == TaskKind::Conversion)
        saveConversionPages(pages, task);
    else if (context.kind == TaskKind::Printing)
        return savePrintPages(pages, task, cmd);
    else if (pages.script)
        pages.script->save(task);
    return true;
}

/// The host doesn't get the code of a page that couldn't be written, because the menu entry is to follow all the same:
/// so the person must get the sentence.
void tellFailure(PageFactory& factory, std::int32_t window, const StatusError& error)
{
    factory.tell(window,
        toText(*error.what() ? error.what() : "A setting of the task couldn't be written; the others may be stored."));
}

void writeMenuEntry(TaskContext& context, IArkTaskProperties& properties)
{
    const auto& page = context.pages.menuCommand;
    const MenuChoice choice = page ? page->choice() : MenuChoice{};
    std::vector<ArkMenuCmd> entries;
    if (choice.show) {
        const Text title = choice.title.empty() ? Text(u"Execute Script") : choice.title;
        entries.push_back({static_cast<std::int32_t>(context.kind), title, menuFlags, choice.description});
    }
    checkStatus(properties.SetMenuCmds(entries));
}

} // namespace

void setupTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, const ObjectRef& self)
{
    const auto properties = query<IArkTaskProperties>(cmd.taskObject);
    if (!properties)
        throw StatusError(E_POINTER);
    if (!context.pages.factory().isWindow(cmd.parentWindow))
        throw StatusError(E_INVALIDARG);
    checkStatus(properties->SetTaskFlags(taskFlags));
    context.kind = readKind(cmd.taskObject, false);
    buildPages(context, *properties, {vault, cmd.taskObject, context.kind, cmd.parentWindow}, self);
}

void setupButton(TaskContext& context, ArkCmd& cmd)
{
    if (cmd.text != u"OK")
        return;
    const auto properties = query<IArkTaskProperties>(cmd.taskObject);
    if (!properties)
        throw StatusError(E_POINTER);
    if (context.pages.menuCommand && !context.pages.menuCommand->save(cmd.taskObject))
        return refuse(cmd, context.pages.factory(), titles::menuCommand);
    try {
        saveKindPages(context, cmd.taskObject, cmd);
    } catch (const StatusError& error) {
        tellFailure(context.pages.factory(), cmd.parentWindow, error);
    }
    writeMenuEntry(context, *properties);
}

} // namespace zn
