#include "addin/flows/TrialFlow.h"

#include "addin/flows/MacroReach.h"
#include "addin/session/FindExecutable.h"
#include "addin/variables/TaskVariables.h"
#include "base/Paths.h"
#include "platform/Registry.h"

namespace zn {

namespace {

constexpr TextView logFolder = u"ErrorLogPath";
/// Where a task may write outside of the vault.
constexpr TextView places[] = {u"OutputPath", u"OutputPath2", logFolder};

/// The path's parts below the folder, with the letter of its drive as the first one.
Text movedBelow(const Text& folder, const Text& path)
{
    Text parts = path;
    if (startsWithDrive(parts))
        parts.erase(1, 1);
    parts.erase(0, parts.find_first_not_of(u"\\/"));
    return withoutTrailingSeparators(folder) + u"\\" + parts;
}

class Trial {
public:
    Trial(IArkVault& vault, IArkTaskProperties& task, const Text& path, const Text& folder)
        : m_task(task)
        , m_folder(folder)
        , m_fileFolder(pathFolder(path))
    {
        checkStatus(vault.GetRootFolderPath(m_root));
        m_root = withoutTrailingSeparators(m_root);
    }

    void move(TextView name)
    {
        Value value;
        const Status status = m_task.GetValue(name, value);
        checkStatus(status);
        const Text* path = value.get<Text>();
        if (status != S_OK || !path)
            return;
        const Text outside = name == logFolder ? canonicalPath(pathAppend(m_root, *path))
                                               : folderOfOutputs(*path, m_root, m_fileFolder);
        if (outside.empty() || isInFolder(outside, m_root))
            return;
        if (!isAbsolutePath(*path))
            throw StatusError(E_INVALIDARG,
                "'" + toUtf8(name) + "' of the task, " + toUtf8(*path)
                    + ", leads out of the vault's folder, so that the task can't be tried. Write the folder as a full "
                      "path.");
        checkStatus(m_task.SetValue(name, Value(movedBelow(m_folder, *path))));
    }

private:
    IArkTaskProperties& m_task;
    const Text& m_folder;
    Text m_fileFolder;
    Text m_root;
};

} // namespace

void prepareTrial(Registry& registry, const std::shared_ptr<IArkVault>& vault,
    const std::shared_ptr<IArkTaskProperties>& task, const Text& path, const Text& folder)
{
    if (!vault || !task)
        throw StatusError(E_POINTER);
    Trial trial(*vault, *task, path, folder);
    for (const TextView name : places)
        trial.move(name);
    registry.write(RegistryRoot::User, addInKey, confineMacrosValue, RegistryValue::number(confineEveryScript));
    registry.removeValue(RegistryRoot::User, addInKey, scriptCopyValue);
}

} // namespace zn
