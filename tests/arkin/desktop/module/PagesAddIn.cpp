#include "base/Status.h"
#include "contracts/host/ArkAddIn.h"
#include "contracts/host/ArkTask.h"
#include "contracts/host/Module.h"
#include "contracts/host/PageMessage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QSpinBox>
#include <QVBoxLayout>

// An add-in for tests of the host's windows: small real pages. What goes wrong stands in the task's variable "Plan".

namespace {

using namespace zn;

Text typed(const QLineEdit& edit) { return edit.text().toStdU16String(); }

Text textOf(auto& task, TextView name)
{
    Value value;
    task.GetValue(name, value);
    return value.toText();
}

/// One edit, in a group that bears the page's name. With "stay" in it, the page doesn't want to be left.
class TestPage : public QWidget {
public:
    TestPage(QWidget* parent, const QString& name)
        : QWidget(parent)
        , edit(new QLineEdit(this))
        , more(new QCheckBox("More", this))
    {
        auto* const group = new QGroupBox(name + " values", this);
        auto* const big = new QWidget(group);
        auto* const inside = new QVBoxLayout(group);
        auto* const format = new QComboBox(group);
        auto* const list = new QListWidget(group);
        for (const char* row : {"STL", "TIF", "VRML"}) {
            format->addItem(row);
            list->addItem(row);
        }
        list->setCurrentRow(0);
        list->setMaximumHeight(80);
        auto* const number = new QSpinBox(group);
        for (const auto& [control, role] :
            {std::pair<QWidget*, const char*>(format, "format"), {list, "list"}, {number, "number"}}) {
            control->setObjectName(role + name);
            inside->addWidget(control);
        }
        inside->addWidget(edit);
        inside->addWidget(more);
        inside->addWidget(big);
        (new QVBoxLayout(this))->addWidget(group);
        edit->setObjectName("edit" + name);
        more->setObjectName("more" + name);
        big->setMinimumHeight(300);
        big->hide();
        connect(more, &QCheckBox::toggled, big, &QWidget::setVisible);
    }

    bool event(QEvent* event) override
    {
        if (event->type() != PageMessage::typeOf(pageLeaveMessage))
            return QWidget::event(event);
        static_cast<PageMessage*>(event)->result = edit->text() == "stay" ? 1 : 0;
        return true;
    }

    QLineEdit* edit;
    QCheckBox* more;
};

class PagesAddIn : public IArkAddIn5, public std::enable_shared_from_this<PagesAddIn> {
public:
    ~PagesAddIn() override
    {
        for (const auto& page : m_pages)
            delete page.data();
    }
    Status GetAddInInfo(ArkAddInInfo*, IArkCmdMgr*) override { return S_OK; }
    Status OnCmd(ArkCmd* cmd, ArkSelection*) override
    {
        switch (cmd->command) {
        case TaskCmdSetup:
            return setup(*cmd, *query<IArkTaskProperties>(cmd->taskObject));
        case TaskCmdSetupButton:
            return cmd->text == u"OK" ? accept(*cmd, *query<IArkTaskProperties>(cmd->taskObject)) : S_OK;
        case TaskCmdLaunch:
            return launch(*cmd, *query<IArkTaskInstance>(cmd->taskObject));
        case TaskCmdLaunchButton:
            return settle(*query<IArkTaskInstance>(cmd->taskObject));
        case TaskCmdDetails:
            return details(*cmd, *query<IArkTaskInstance>(cmd->taskObject));
        default:
            return S_OK;
        }
    }

private:
    TestPage& makePage(const ArkCmd& cmd, const QString& name)
    {
        m_pages.emplace_back(
            new TestPage(cmd.parentWindow ? QWidget::find(static_cast<WId>(cmd.parentWindow)) : nullptr, name));
        return *m_pages.back();
    }
    static std::int32_t handle(QWidget& page) { return static_cast<std::int32_t>(page.winId()); }

    Status setup(ArkCmd& cmd, IArkTaskProperties& task)
    {
        if (!QWidget::find(static_cast<WId>(cmd.parentWindow)))
            return E_INVALIDARG;
        std::vector<ArkTaskPage> records;
        for (const auto* name : {u"First", u"Second"}) {
            auto& page = makePage(cmd, QString::fromUtf16(name));
            page.edit->setText(QString::fromStdU16String(textOf(task, name)));
            records.push_back({name, handle(page), shared_from_this()});
        }
        // As an option dialog does it, which stores what its own OK accepts.
        QObject::connect(m_pages[0]->edit, &QLineEdit::textEdited, m_pages[0],
            [&task](const QString& text) { task.SetValue(u"Option", Value(text.toStdU16String())); });
        return task.SetSetupPages(records);
    }

    Status accept(ArkCmd& cmd, IArkTaskProperties& task)
    {
        const auto plan = textOf(task, u"Plan");
        if (plan == u"fail")
            cmd.text = u"It went wrong.";
        if (plan == u"fail")
            return E_FAIL;
        if (plan == u"box")
            QMessageBox::warning(nullptr, "Test", "Nobody sees this.");
        if (plan == u"tell" && !cmd.attended)
            cmd.unspoken = u"Nobody hears this.";
        if (plan == u"object")
            task.SetValue(u"Wrong", Value(ObjectRef()));
        if (m_pages[0]->edit->text() == "bad") {
            m_pages[0]->edit->setFocus();
            cmd.cancel = -1;
            cmd.text = u"First";
            return S_OK;
        }
        task.SetValue(u"First", Value(typed(*m_pages[0]->edit)));
        task.SetValue(u"Second", Value(typed(*m_pages[1]->edit)));
        return task.SetMenuCmds({{3, Text(u"Entry"), 0x4001, Text(u"Words")}});
    }

    Status launch(ArkCmd& cmd, IArkTaskInstance& run)
    {
        const auto plan = textOf(run, u"Plan");
        if (plan == u"cancel")
            cmd.cancel = -1;
        if (plan == u"fail")
            return E_ACCESSDENIED;
        if (plan == u"tell" && !cmd.attended)
            cmd.unspoken = u"Nobody hears this.";
        if (plan == u"ask") {
            auto& page = makePage(cmd, "Colour");
            cmd.parentWindow = handle(page);
            cmd.text = u"Settings";
            cmd.taskObject = shared_from_this();
        }
        return S_OK;
    }

    Status settle(IArkTaskInstance& run)
    {
        if (m_pages[0]->edit->text() == "bad")
            return S_FALSE;
        return run.SetValue(u"Colour", Value(typed(*m_pages[0]->edit)));
    }

    Status details(ArkCmd& cmd, IArkTaskInstance& run)
    {
        TaskRunState state{};
        checkStatus(run.GetStatus(state));
        auto& page = makePage(cmd, "Files");
        page.edit->setText(QString::number(static_cast<int>(state)));
        cmd.text = u"Selected Files";
        cmd.parentWindow = handle(page);
        cmd.taskObject = shared_from_this();
        return run.SetValue(u"Colour", Value(1)) == E_ACCESSDENIED ? S_OK : E_UNEXPECTED;
    }

    std::vector<QPointer<TestPage>> m_pages;
};

class Factory : public IClassFactory {
public:
    Status CreateInstance(ObjectRef& object) override
    {
        object = std::make_shared<PagesAddIn>();
        return S_OK;
    }
};

} // namespace

extern "C" {
Status DllGetClassObject(const char16_t*, ObjectRef* factory)
{
    *factory = std::make_shared<Factory>();
    return S_OK;
}
/// The toolkit keeps references into the library.
Status DllCanUnloadNow() { return S_FALSE; }
}
