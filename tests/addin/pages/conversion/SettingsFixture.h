#pragma once

#include "arkin/tasks/LaunchInstance.h"
#include "arkin/tasks/RunValues.h"
#include "tests/support/pages/PageFixture.h"

namespace zn::test {

/// Expected and stored variables are compared as lines "name=value".
inline std::vector<std::string> lines(const zn::arkin::Variables& variables)
{
    std::vector<std::string> result;
    for (const auto& [name, value] : variables)
        result.push_back(toUtf8(name) + "=" + toUtf8(value.toText()));
    return result;
}

/// The conversion settings page over the real vault, at setup and at launch.
class SettingsFixture : public PageFixture {
protected:
    /// The page at setup, of a task with these variables. An earlier task and its page go.
    void setUp(zn::arkin::Variables variables = {})
    {
        if (task)
            tasks.remove(task->task().id);
        task.reset();
        page.reset();
        openTask(TaskKind::Conversion, std::move(variables));
        page = pages().makeConversionPage(setting(TaskKind::Conversion), false);
        page->load(task);
        show();
    }
    /// The page at the launch of a task with these variables.
    void launch(zn::arkin::Variables variables, std::int32_t selectedKinds)
    {
        variables[u"__type"] = 1;
        run = launchOf(std::move(variables));
        PageSetting below = setting(TaskKind::Conversion);
        below.task = run;
        page.reset();
        page = pages().makeConversionPage(below, true);
        page->loadForLaunch(run, selectedKinds);
        show();
    }
    void show()
    {
        widget = QWidget::find(static_cast<WId>(page->window()));
        widget->show();
        widget->adjustSize();
        QTest::qWait(0);
    }
    template <class Control> Control* on(const char* role) { return find<Control>(*widget, role); }
    bool sees(const char* role) { return on<QWidget>(role)->isVisible(); }

    std::shared_ptr<zn::arkin::LaunchInstance> run;
    std::unique_ptr<ConversionPage> page;
    QWidget* widget = nullptr;
};

} // namespace zn::test
