#include "tests/addin/session/SessionFixture.h"
#include "tests/support/FakeHost.h"

namespace zn::test {
namespace {

class DocumentTest : public SessionTest {
protected:
    FakeRef named(const char* member, const char16_t* name)
    {
        auto object = std::make_shared<FakeObject>();
        object->set(member, name);
        return object;
    }
    FakeRef document(std::int32_t type)
    {
        auto model = std::make_shared<FakeObject>();
        model->set("GetType", type);
        model->set("GetPathName", u"Z:\\in\\source.zen");
        const auto manager = std::make_shared<FakeObject>();
        manager->set("ActiveConfiguration", Value(named("Name", u"Large")));
        model->set("ConfigurationManager", Value(manager));
        model->set("GetCurrentSheet", Value(named("GetName", u"Sheet2")));
        return model;
    }
    void configure(TaskKind kind, std::int32_t files, std::int32_t outputs)
    {
        for (const char16_t* name : {u"FileSheets", u"FileConfs"})
            host.taskVariables[name] = files;
        // A number that was stored as a text counts as well.
        for (const char16_t* name : {u"OutputSheets", u"OutputConfs"})
            host.taskVariables[name] = numberText(outputs);
        host.taskVariables[u"NamedSheet"] = u"Named sheet";
        host.taskVariables[u"NamedConf"] = u"Named configuration";
        session.Configure(notes, kind, host.task(), 0);
    }
    /// Opens documents in the application and tells the session.
    void open(const std::vector<FakeRef>& models)
    {
        for (std::size_t i = 0; i < models.size(); ++i)
            models[i]->set("GetNext", i + 1 < models.size() ? Value(models[i + 1]) : Value());
        application->set("GetFirstDocument", Value(models.front()));
        EXPECT_EQ(application->fire(u"ApplicationEvents", 22), S_OK);
    }

    FakeHost host;
};

TEST_F(DocumentTest, TellsEachSaveByTheEventsOfItsType)
{
    configure(TaskKind::General, 0, 0);
    ASSERT_EQ(session.Start(), S_OK);
    const FakeRef part = document(1);
    const FakeRef assembly = document(2);
    const FakeRef drawing = document(3);
    open({part, assembly, drawing});
    const std::tuple<FakeRef, const char16_t*, std::int32_t, const char16_t*, const char*> cases[] = {
        {part, u"PartDocEvents", 7, u"Z:\\a.step", "saved Z:\\a.step [Large]"},
        {part, u"PartDocEvents", 76, u"Z:\\b.STL", "saved Z:\\b.STL [Large]"},
        {part, u"PartDocEvents", 26, u"Z:\\c.dxf", "saved Z:\\c.dxf [Large]"},
        {part, u"PartDocEvents", 7, u"Z:\\c.DXF", ""},
        {part, u"PartDocEvents", 94, u"Z:\\no.step", ""},
        {assembly, u"AssemblyDocEvents", 7, u"Z:\\d.step", "saved Z:\\d.step [Large]"},
        {assembly, u"AssemblyDocEvents", 94, u"Z:\\e.step", "saved Z:\\e.step [Large]"},
        {assembly, u"AssemblyDocEvents", 31, u"Z:\\f.dwg", "saved Z:\\f.dwg [Large]"},
        {assembly, u"AssemblyDocEvents", 7, u"Z:\\f.dwg", ""},
        {drawing, u"DrawingDocEvents", 7, u"Z:\\g.pdf", "saved Z:\\g.pdf [Sheet2]"},
        {drawing, u"DrawingDocEvents", 23, u"Z:\\h.DXF", "saved Z:\\h.DXF [Sheet2]"},
        {drawing, u"DrawingDocEvents", 26, u"Z:\\no.pdf", ""},
    };
    for (const auto& [model, events, number, path, line] : cases) {
        notes.lines.clear();
        EXPECT_EQ(model->fire(events, number, {path}), S_OK);
        const std::vector<std::string> expected = *line ? std::vector<std::string>{line} : std::vector<std::string>();
        EXPECT_EQ(notes.lines, expected) << toUtf8(events) << ' ' << number;
    }
}

TEST_F(DocumentTest, LabelsResultsAsTheTaskGroupsThem)
{
    const std::tuple<TaskKind, std::int32_t, std::int32_t, const char*, const char*> cases[] = {
        {TaskKind::Conversion, 2, 2, "All configurations", "All sheets"},
        {TaskKind::Conversion, 4, 2, "Large", "Sheet2"},
        {TaskKind::Conversion, 0, 8, "Named configuration", "Named sheet"},
        {TaskKind::Conversion, 0, 10, "All configurations", "All sheets"},
        {TaskKind::Conversion, 0, 1, "Large", "Sheet2"},
        {TaskKind::Printing, 2, 2, "Large", "Sheet2"},
    };
    for (const auto& [kind, files, outputs, configuration, sheet] : cases) {
        configure(kind, files, outputs);
        ASSERT_EQ(session.Start(), S_OK);
        const FakeRef part = document(1);
        const FakeRef drawing = document(3);
        open({part, drawing});
        notes.lines.clear();
        part->fire(u"PartDocEvents", 7, {u"p"});
        drawing->fire(u"DrawingDocEvents", 7, {u"d"});
        EXPECT_THAT(notes.lines,
            ElementsAre("saved p [" + std::string(configuration) + "]", "saved d [" + std::string(sheet) + "]"));
        session.Stop(true, S_OK);
    }
}

TEST_F(DocumentTest, TellsASaveWhoseNameTheApplicationCannotGive)
{
    configure(TaskKind::General, 0, 0);
    ASSERT_EQ(session.Start(), S_OK);
    const FakeRef part = document(1);
    open({part});
    part->failures = {{"ConfigurationManager", E_FAIL}};
    EXPECT_EQ(part->fire(u"PartDocEvents", 7, {u"p"}), S_OK);
    EXPECT_THAT(notes.lines, ElementsAre("saved p []"));
}

TEST_F(DocumentTest, ListensToEachDocumentOnceAndUntilItCloses)
{
    configure(TaskKind::General, 0, 0);
    ASSERT_EQ(session.Start(), S_OK);
    const FakeRef part = document(1);
    const FakeRef other = document(1);
    open({part, other});
    open({part, other});
    EXPECT_EQ(std::count(part->log->begin(), part->log->end(), "advise PartDocEvents"), 1);

    const auto sink = part->sinks.at(u"PartDocEvents");
    EXPECT_EQ(sink->onEvent(2, {}), S_OK);
    EXPECT_TRUE(part->sinks.empty());
    EXPECT_EQ(sink->onEvent(2, {}), S_OK);
    EXPECT_FALSE(other->sinks.empty());
    session.Stop(true, S_OK);
    EXPECT_TRUE(other->sinks.empty());

    // A document of an unknown type ends the walk, and what comes behind it stays unknown.
    ASSERT_EQ(session.Start(), S_OK);
    const FakeRef strange = document(7);
    strange->set("GetNext", Value(part));
    application->set("GetFirstDocument", Value(strange));
    EXPECT_EQ(application->fire(u"ApplicationEvents", 12), E_UNEXPECTED);
    EXPECT_TRUE(part->sinks.empty());
    EXPECT_EQ(application->fire(u"ApplicationEvents", 8), S_OK);
}

TEST_F(DocumentTest, TellsPrintsByTheViewsOfADocument)
{
    configure(TaskKind::Printing, 0, 0);
    ASSERT_EQ(session.Start(), S_OK);
    const FakeRef drawing = document(3);
    const auto first = std::make_shared<FakeObject>();
    const auto second = std::make_shared<FakeObject>();
    first->set("GetNext", Value(second));
    drawing->set("GetFirstModelView", Value(first));
    open({drawing});
    second->fire(u"ModelViewEvents", 9);
    second->fire(u"ModelViewEvents", 10);
    EXPECT_THAT(notes.lines, ElementsAre("printed Z:\\in\\source.zen [Sheet2]"));
    session.Stop(true, S_OK);
    EXPECT_TRUE(first->sinks.empty() && second->sinks.empty() && drawing->sinks.empty());
}

TEST_F(DocumentTest, CorrectsDrawingsOfOldReleasesInRegressionModeBeforeASave)
{
    const auto member = [](const char16_t* text1, const char16_t* text2) {
        auto object = std::make_shared<FakeObject>();
        object->set("GetText1", text1);
        object->set("GetText2", text2);
        return object;
    };
    const FakeRef alike = member(u"abc", u"abd");
    const FakeRef apart = member(u"abc", u"ab");
    const auto view = std::make_shared<FakeObject>();
    view->set("GetMembers", Value::arrayOf({Value(alike), Value(apart)}));
    const Value views = Value::arrayOf({Value::arrayOf({Value(view)}), Value::arrayOf({Value(ObjectRef())})});

    const std::tuple<const char16_t*, bool, bool> cases[]
        = {{u"21.2.0", false, true}, {u"21.3.0", false, false}, {u"20.9.0", true, false}};
    for (const auto& [revision, preference, corrected] : cases) {
        application->set("RevisionNumber", revision);
        application->set("GetUserPreferenceToggle", preference);
        configure(TaskKind::Conversion, 4, 0);
        ASSERT_EQ(session.Start(), S_OK);
        const FakeRef drawing = document(3);
        drawing->set("GetViews", views);
        open({drawing});
        alike->log->clear();
        apart->log->clear();
        notes.lines.clear();
        EXPECT_EQ(drawing->fire(u"DrawingDocEvents", 7, {u"d.pdf"}), S_OK);
        EXPECT_EQ(std::count(apart->log->begin(), apart->log->end(), "Update"), corrected ? 1 : 0);
        EXPECT_EQ(std::count(alike->log->begin(), alike->log->end(), "Update"), 0);
        EXPECT_THAT(notes.lines, ElementsAre("saved d.pdf [Sheet2]"));
        drawing->failures = {{"GetViews", E_ACCESSDENIED}};
        EXPECT_EQ(drawing->fire(u"DrawingDocEvents", 7, {u"d.pdf"}), corrected ? E_ACCESSDENIED : S_OK);
        session.Stop(true, S_OK);
    }
}

} // namespace
} // namespace zn::test
