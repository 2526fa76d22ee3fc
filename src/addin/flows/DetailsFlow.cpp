#include "addin/flows/DetailsFlow.h"

namespace zn {

namespace {

bool hasFinished(TaskRunState state)
{
    return state == TaskRunState::Finished || state == TaskRunState::Cancelled
        || state == TaskRunState::FinishedWithErrors;
}

/// A finished run of a kind that nobody knows gets no title.
Text titleOf(PageFactory& factory, TaskKind kind, bool finished)
{
    if (finished && kind == TaskKind::Conversion)
        return textOf(factory, titles::convertedFiles);
    if (finished && kind == TaskKind::Printing)
        return textOf(factory, titles::printedFiles);
    if (finished && kind != TaskKind::General)
        return {};
    return textOf(factory, titles::selectedFiles);
}

} // namespace

void showDetails(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, const ObjectRef& self)
{
    const auto instance = query<IArkTaskInstance>(cmd.taskObject);
    if (!instance)
        throw StatusError(cmd.taskObject ? E_NOINTERFACE : E_POINTER);
    TaskRunState state{};
    checkStatus(instance->GetStatus(state));
    context.kind = readKind(cmd.taskObject, true);
    PageFactory& factory = context.pages.factory();
    const bool finished = hasFinished(state);
    context.pages.fileDetails
        = factory.makeFileDetailsPage({vault, cmd.taskObject, context.kind, cmd.parentWindow}, finished);
    cmd.text = titleOf(factory, context.kind, finished);
    cmd.taskObject = self;
    cmd.parentWindow = context.pages.fileDetails->window();
}

} // namespace zn
