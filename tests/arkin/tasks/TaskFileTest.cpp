#include "arkin/tasks/NewTask.h"
#include "arkin/tasks/VariableRules.h"
#include "tests/arkin/tasks/TaskFixture.h"

#include <gmock/gmock.h>

namespace zn::arkin::test {

using ::testing::HasSubstr;
using zn::Value;
using zn::ValueType;

namespace {

const KnownVariables known = {
    {u"FileCardData", ValueType::String},
    {u"FileFormat", ValueType::String},
    {u"OutputPath", ValueType::String},
    {u"Header", ValueType::String, true},
    {u"Margin", ValueType::Float32},
    {u"ReplaceOutput", ValueType::Boolean},
    {u"StlQuality", ValueType::Int32},
};

} // namespace

TEST(TaskFileTest, SaysWhatIsWrongWhere)
{
    const struct {
        const char* json;
        const char* sentence;
    } rows[] = {
        {"{\n  \"variables\": {,}\n}", "isn't well-formed JSON at line 2, column 17."},
        {"", "isn't well-formed JSON at line 1, column 1."},
        {"[]", "A task file has to be an object in braces, not []."},
        {R"({"variable": {}})",
            "has no member 'variable'; it takes 'variables', 'script', 'fileLimit', 'identical' and 'menu'."},
        {R"({"variables": {"StlQualty": 1}})", "No task has a variable named 'StlQualty'; did you mean 'StlQuality'?"},
        {R"({"variables": {"Nonsense": 1}})", "No task has a variable named 'Nonsense'."},
        {R"({"variables": {"StlQuality": "fine"}})", "'StlQuality' takes a whole number, not \"fine\"."},
        {R"({"variables": {"StlQuality": 2.5}})", "'StlQuality' takes a whole number, not 2.5."},
        {R"({"variables": {"StlQuality": 3000000000}})", "'StlQuality' takes a whole number, not 3000000000."},
        {R"({"variables": {"ReplaceOutput": 1}})", "'ReplaceOutput' takes true or false, not 1."},
        {R"({"variables": {"OutputPath": true}})", "'OutputPath' takes a text, or an array of lines, not true."},
        {R"({"variables": {"FileCardData": ["a", 1]}})", "takes a text, or an array of lines, not [\"a\",1]."},
        {R"({"menu": {"display": "yes"}})", "'menu.display' takes true or false, not \"yes\"."},
        {R"({"script": 1})", "'script' takes a text, not 1."},
        {R"({"variables": {"Margin": 1e39}})", "takes a number, not 1e+39."},
        {R"({"variables": {"Margin": 1e999}})", "The text holds a number that is too big."},
        {R"({"script": [[[[[[[[[[[[[[[[1]]]]]]]]]]]]]]]]})",
            "has more brackets inside one another than any task file."},
        {R"({"one\ntwo": 1})", "has no member 'one?two';"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(sentenceOf([&] { parseTaskFile(row.json, known); }), HasSubstr(row.sentence));
}

TEST(TaskFileTest, ReadsTheSettingsOfACommandLineByTheVariablesType)
{
    EXPECT_EQ(parseVariable(u"ReplaceOutput", u"Yes", known), Value(true));
    EXPECT_EQ(parseVariable(u"ReplaceOutput", u"0", known), Value(false));
    EXPECT_EQ(parseVariable(u"StlQuality", u"-2", known), Value(-2));
    EXPECT_EQ(parseVariable(u"Margin", u"2.5", known), Value(2.5F));
    EXPECT_EQ(parseVariable(u"OutputPath", u"12", known), Value(u"12"));
    EXPECT_EQ(sentenceOf([] { parseVariable(u"ReplaceOutput", u"maybe", known); }),
        "The variable 'ReplaceOutput' takes true or false, not 'maybe'.");
    EXPECT_EQ(sentenceOf([] { parseVariable(u"StlQuality", u"2x", known); }),
        "The variable 'StlQuality' takes a whole number, not '2x'.");
}

TEST(TaskFileTest, PartsTheLinesOfATextByCrLfAndEndsThoseOfAListByLineFeeds)
{
    const struct {
        const char* json;
        const char16_t* header;
    } rows[] = {
        {R"(["one", "two"])", u"one\r\ntwo"},
        {R"("one\ntwo\r\n\rthree")", u"one\r\ntwo\r\n\r\nthree"},
        {R"(["one"])", u"one"},
        {R"([])", u""},
    };
    for (const auto& row : rows) {
        const auto file = parseTaskFile(
            std::string(R"({"variables": {"FileCardData": ["a;1;", "b;1;"], "Header": )") + row.json + "}}", known);
        EXPECT_EQ(file.variables.at(u"Header"), Value(row.header)) << row.json;
        EXPECT_EQ(file.variables.at(u"FileCardData"), Value(u"a;1;\nb;1;\n"));
    }
    EXPECT_EQ(parseVariable(u"Header", u"one\ntwo", known), Value(u"one\r\ntwo"));
    EXPECT_EQ(parseVariable(u"FileCardData", u"a;1;\n", known), Value(u"a;1;\n"));
}

TEST(TaskFileTest, WhatIsGivenWinsOverWhatThePagesWrite)
{
    TaskRequest request;
    request.name = u"To STL";
    request.kind = zn::TaskKind::Conversion;
    request.script = u"sub main\n";
    request.file = parseTaskFile(R"json({"variables": {"FileFormat": "STL (*.stl)", "StlQuality": 2,
        "FileCardData": ["Description;100;Title", "Note;8;a; b"]}, "menu": {"text": "STL", "display": true}})json",
        known);
    request.settings = {{u"StlQuality", Value(1)}};
    auto task = startTask(request);
    EXPECT_EQ(task.variables.at(u"StlQuality"), Value(1));
    // As the pages might leave it.
    task.variables[u"StlQuality"] = Value(7);
    task.variables[u"OutputPath"] = Value(u"x");
    task.menu = {{1, u"Convert Files", u"Converts"}};
    settleTask(task, request);
    EXPECT_EQ(task.variables,
        (Variables{{u"__type", Value(1)}, {u"__script", Value(u"sub main\n")}, {u"__menucmd_display", Value(true)},
            {u"FileFormat", Value(u"STL (*.stl)")}, {u"StlQuality", Value(1)}, {u"OutputPath", Value(u"x")},
            {u"FileCardData", Value(u"Description;100;Title\nNote;8;a; b\n")}}));
    EXPECT_EQ(task.menu, (std::vector<MenuEntry>{{1, u"STL", u"Converts"}}));
}

TEST_F(TaskFixture, TheAddInTellsTheRulesOfItsVariables)
{
    const VariableRules rules(host, u"Test.AddIn");
    EXPECT_EQ(parseVariable(u"StlQuality", u"3", rules.known()), Value(3));
    TaskDefinition task;
    task.variables = {{u"OutputPath", Value(u"<Path>")}, {u"PathLength", Value(99)}};
    rules.settle(task);
    EXPECT_EQ(task.variables, (Variables{{u"OutputPath", Value(u"<Path>")}, {u"PathLength", Value(6)}}));
    task.variables[u"OutputPath"] = Value(u"Q");
    EXPECT_EQ(sentenceOf([&] { rules.settle(task); }), "No path has a Q.");

    const VariableRules none(host, u"Test.Silent");
    EXPECT_EQ(sentenceOf([&] { parseVariable(u"StlQuality", u"3", none.known()); }),
        "The task's add-in doesn't tell which variables its tasks have; its pages alone can set them.");
    none.settle(task);
    EXPECT_EQ(task.variables.at(u"OutputPath"), Value(u"Q"));
}

} // namespace zn::arkin::test
