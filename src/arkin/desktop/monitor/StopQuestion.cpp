#include "arkin/desktop/monitor/StopQuestion.h"

#include "arkin/desktop/frame/Texts.h"

#include <QMessageBox>
#include <QPushButton>

namespace zn::arkin {

std::optional<StopWhen> askWhenToStop(QWidget* parent, const WorkerInfo& worker)
{
    QMessageBox box(QMessageBox::Question, own("Stop Worker"),
        own("Worker %1 is at work on run %2 of “%3”. When is it to stop?")
            .arg(worker.id)
            .arg(worker.run->id)
            .arg(shown(worker.run->taskName)),
        QMessageBox::Cancel, parent);
    box.setTextFormat(Qt::PlainText);
    QString consequences = own("After the file at hand: the run is cancelled.");
    auto* const afterRun = box.addButton(own("After &Run"), QMessageBox::AcceptRole);
    auto* const afterFile = box.addButton(own("After &File"), QMessageBox::DestructiveRole);
    const QPushButton* atOnce = nullptr;
    if (isHere(worker.process)) {
        atOnce = box.addButton(own("At &Once"), QMessageBox::DestructiveRole);
        consequences += '\n' + own("At once: the next worker begins the run anew.");
    }
    box.setInformativeText(consequences);
    box.setDefaultButton(afterRun);
    box.exec();
    if (box.clickedButton() == afterRun)
        return StopWhen::AfterRun;
    if (box.clickedButton() == afterFile)
        return StopWhen::AfterFile;
    return atOnce && box.clickedButton() == atOnce ? std::optional(StopWhen::AtOnce) : std::nullopt;
}

} // namespace zn::arkin
