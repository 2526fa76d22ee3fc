#include "arkin/desktop/explorer/TaskMenu.h"

#include "arkin/desktop/frame/Texts.h"

#include <map>
#include <QMenu>

namespace zn::arkin {

int addTaskEntries(QMenu& menu, TaskStore& tasks, const std::function<void(const zn::Text& task)>& launch)
{
    const auto entries = tasks.menuEntries();
    std::map<zn::Text, int> wordings;
    for (const TaskMenuEntry& entry : entries)
        ++wordings[entry.menuText];
    for (const TaskMenuEntry& entry : entries) {
        QString text = shown(entry.menuText);
        if (wordings[entry.menuText] > 1) // administrators often leave the add-in's own text
            text = QStringLiteral("%1 – %2").arg(text, shown(entry.taskName));
        QAction* const action = menu.addAction(text);
        action->setObjectName("task:" + shown(entry.taskName));
        action->setStatusTip(shown(entry.statusText));
        action->setToolTip(shown(entry.taskName));
        QObject::connect(action, &QAction::triggered, &menu, [launch, name = entry.taskName] { launch(name); });
    }
    return static_cast<int>(entries.size());
}

} // namespace zn::arkin
