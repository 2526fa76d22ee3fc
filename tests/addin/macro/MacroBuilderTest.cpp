#include "addin/macro/MacroBuilder.h"
#include "addin/macro/DelimiterScan.h"
#include "platform/Registry.h"
#include "tests/support/Failures.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace zn {

class MacroBuilderTest : public ::testing::Test {
protected:
    MacroBuilderTest()
    {
        host.root = platform.path("vault") + u"\\\\";
        host.cardVariables = {u"Number", u"Title"};
        host.addFile(7, 3, u"C:\\V\\sub\\flange.zenprt", 4);
        platform.clock.time = 1520251200; // noon of 5 March 2018 in London
    }

    static Text wrapped(TextView body)
    {
        return Text(u"' Please look at at ui_MacroFileAuthorized if you modify this macro.\n' Start Task "
                    u"Customization\n")
            .append(body)
            .append(u"\n' End Task Customization");
    }

    Text build(const Text& templateText, TextView version = u"zn2018", TextView configuration = u"")
    {
        builder.Prepare(host.vault(), host.task(), templateText);
        builder.SetFile(u"C:\\V\\sub\\flange.zenprt", configuration, 7, 3, 4);
        return builder.Build(version);
    }

    std::string log() { return platform.machine.files().readBytes(builder.GetErrorLogPath()).value_or("no log"); }

    test::TestPlatform platform;
    test::FakeHost host;
    MacroBuilder builder{platform.ports()};
};

TEST_F(MacroBuilderTest, ResolvesEveryPlaceholderInItsStep)
{
    host.taskVariables = {
        {u"OutputPath", u"<VaultPath>\\<Filename>_<Revision>_%Number%"},
        {u"StlQuality", 2},
        {u"PdfInColor", true},
        {u"NamedSheet", u"図面\r\n2"},
        {u"UsedVariables", u"Number,,Title"},
    };
    host.runValues = {{{0, u"User"}, u"eve\r\n[StlQuality]"}, {{12, u"#"}, 99}, {{0, u"#"}, u"zero"}};
    host.find(7)->revision = u"B";
    host.find(7)->workflowState = u"In <Version>. Ä";
    host.find(7)->card = {{{u"Number", u"Long"}, u"A 7"}, {{u"Title", u"Long"}, u"T"}};

    const Text macro = build(u"{User} {#12} {##abc} {Nobody}|[StlQuality] [PdfInColor] [Unknown]|\"[NamedSheet]\"\r\n"
                             u"\"[OutputPath]\"|<Filepath>|<Path>|<TaskInstanceGuid>|<SelCfgOrSheet>|<Version>|"
                             u"<WorkflowState>|<Today>|<Supported_2017ZN><Supported_2018ZN>|%Title%|<filepath>",
        u"zn2017zn", u"Long");

    EXPECT_EQ(macro,
        wrapped(u"eve\"+vbLf+\"2 99 zero |2 True |\"\" & ChrW(22259) & ChrW(38754) & \"\"+vbLf+\"2\"\r\n\""
            + platform.path("vault")
            + u"\\<Filename>_B_A "
              u"7\"|C:\\V\\sub\\flange.zenprt|C:\\V\\sub|{6D1A7B52-0C8E-4E0B-9F6C-0123456789AB}|Long|4|"
              u"In <Version>. Ä|Mar 05 2018|TrueFalse|%Title%|<filepath>"));
}

TEST_F(MacroBuilderTest, LeavesATemplateWithoutPlaceholdersAlone)
{
    EXPECT_EQ(build(u"Sub main()\r\nEnd Sub\r\n"), wrapped(u"Sub main()\r\nEnd Sub\r\n"));
    EXPECT_EQ(build(u""), wrapped(u""));
    host.taskVariables[u"Name"] = u"v";
    EXPECT_EQ(build(u"[[Name]] %A% < >"), wrapped(u"v] %A% < >"));
}

TEST_F(MacroBuilderTest, PassesOverWhatTheCardLacks)
{
    host.taskVariables[u"UsedVariables"] = u"Number,Gone,Title";
    host.find(7)->card = {{{u"Title", u"@"}, 12.5}};
    // "Number" has no value, "Gone" is no variable of the vault.
    EXPECT_EQ(build(u"a%Number%b%Gone%c%Title%%Title%"), wrapped(u"ab%Gone%c12.512.5"));

    builder.SetFile(u"C:\\V\\nowhere.zenprt", u"", 8, 3, 1);
    EXPECT_THROW(builder.Build(u"zn2018"), StatusError);
}

TEST_F(MacroBuilderTest, AsksForTheRevisionOnlyWhereAnOutputPathNeedsIt)
{
    host.find(7)->revision = u"C";
    host.taskVariables[u"OutputPath2"] = u"[Nested]";
    host.taskVariables[u"Nested"] = u"<Revision>";
    EXPECT_EQ(build(u"r<Revision>"), wrapped(u"r"));
    EXPECT_TRUE(host.calls.empty());

    host.taskVariables[u"OutputPath2"] = u"x<WorkflowState>";
    EXPECT_EQ(build(u"r<Revision>"), wrapped(u"rC"));
    EXPECT_EQ(host.calls, std::vector<std::string>{"GetVersionInfo 7 4 3"});

    host.failures["GetVersionInfo"] = E_ARK_PERMISSION_DENIED;
    test::expectStatus(E_ARK_PERMISSION_DENIED, [&] { build(u""); });
}

TEST_F(MacroBuilderTest, ShowsTodayInTheVaultsStyleWithoutSlashes)
{
    const Text key = u"Software\\Zentrel\\Applications\\Arkin Enterprise\\Vaults\\Demo";
    platform.ports().registry.write(RegistryRoot::User, key, u"DateFmt", RegistryValue::number(103));
    EXPECT_EQ(build(u"<Today>", u"2016"), wrapped(u"05_03_2018"));
    EXPECT_EQ(builder.Build(u"x"), wrapped(u"05_03_2018"));
}

/// The years of the two flags, for version texts with and without a year.
TEST_F(MacroBuilderTest, ComparesTheYear)
{
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"zn2016", u"False False"},
        {u"zn2017", u"True False"},
        {u"zn2018", u"True True"},
        {u"2zn025", u"True True"},
        {u"beta", u"False False"},
    };
    for (const auto& [version, flags] : cases)
        EXPECT_EQ(build(u"<Supported_2017ZN> <Supported_2018ZN>", version), wrapped(flags));
}

TEST_F(MacroBuilderTest, EndsWhenValuesBringThemselvesInAgain)
{
    // Ten places, at each of which the text grows by one character for each place: it would take a million steps to any
    // size that can be told from a large macro. The second and third row grow to their double and take turns.
    const std::map<Text, Value> values[] = {
        {{u"A", u"[A]x"}},
        {{u"A", u"x[A][A]"}},
        {{u"A", u"[B]xxxxxxxx"}, {u"B", u"[A]xxxxxxxx"}},
    };
    Text text;
    for (int place = 0; place < 10; ++place)
        text += u"[A] ";
    for (const auto& each : values) {
        host.taskVariables.clear();
        host.taskVariables.insert(each.begin(), each.end());
        EXPECT_THAT(test::sentenceOf([&] { build(text); }), ::testing::HasSubstr("contains itself"));
    }
    // Many placeholders are no ring, and none comes back.
    host.taskVariables.clear();
    Text many;
    for (int i = 0; i < 300; ++i) {
        host.taskVariables[u"V" + numberText(i)] = u"v";
        many += u"[V" + numberText(i) + u"]";
    }
    EXPECT_EQ(build(many), wrapped(Text(300, u'v')));
    // A pattern in brackets is no such value, although what it brings in at the second place is a name without a value.
    host.taskVariables = {{u"A", u"[A-Z]*"}};
    EXPECT_EQ(build(text.substr(0, 7)), wrapped(u"* *"));
    host.taskVariables = {{u"A", u"x[A][A]"}};
    EXPECT_EQ(build(u"[A]"), wrapped(u"x[A][A]")) << "at one place nothing is stepped over";
}

TEST_F(MacroBuilderTest, EndsAtAnOpenBracketWithALineInTheLog)
{
    host.taskVariables = {{u"ErrorLogPath", u"\\Logs\\Convert"}, {u"Lines", u"1\n2\n3"}};
    const Text templateText = u"a = \"[Lines]\"\r\n'\r\nb = [Stl\r\n";
    EXPECT_THROW(build(templateText), OpenDelimiterError);
    EXPECT_EQ(log(),
        "The \"[\" in line 3 of the macro template has no closing bracket after it. Please close or remove it on the "
        "task's script page.\r\n");

    // One that a value has brought in, which was not stepped over at its second place.
    host.taskVariables[u"Lines"] = u"x[";
    EXPECT_THROW(build(u"[Lines]\n[Lines]"), OpenDelimiterError);
    EXPECT_NE(log().find("The \"[\" in line 2 of"), std::string::npos);

    // Where the empty name has a value, the scan gets past the bracket.
    host.taskVariables[u""] = u"v";
    EXPECT_EQ(build(templateText), wrapped(u"a = \"x[\"\r\n'\r\nb = [Stl\r\n"));
}

TEST_F(MacroBuilderTest, KeepsOneLogForTheRun)
{
    build(u"");
    EXPECT_EQ(builder.GetErrorLogPath(), u"");
    builder.AppendToLog(u"goes nowhere");

    const Text guid = u"{6D1A7B52-0C8E-4E0B-9F6C-0123456789AB}.log";
    host.taskVariables[u"ErrorLogPath"] = u"";
    EXPECT_EQ(builder.GetErrorLogPath(), platform.path("vault") + u"\\" + guid);
    host.taskVariables[u"ErrorLogPath"] = platform.path("elsewhere");
    EXPECT_EQ(builder.GetErrorLogPath(), platform.path("elsewhere") + u"\\" + guid);

    host.taskVariables[u"ErrorLogPath"] = u"\\Logs\\Convert";
    EXPECT_EQ(builder.GetErrorLogPath(), platform.path("vault") + u"\\Logs\\Convert\\" + guid);
    builder.AppendToLog(u"naïve 日\r\n");
    builder.LogHostError(E_ARK_PERMISSION_DENIED, u"Unlocking files.");
    EXPECT_EQ(log(), "na\xEFve <U+65E5>\r\nAn error occured: Unlocking files.\r\n\tE_80040203\r\n\tWhat it means.");
}

/// The single pass must mean the same as twelve plain passes for any text, however the pieces fall together.
TEST(TokenTemplate, MeansPlainPasses)
{
    const std::vector<Text> tokens = {u"<A>", u"<B>", u"%A%", u"%A%B%", u"%B%"};
    const std::vector<Text> pieces
        = {u"<A>", u"<B>", u"%A%", u"%B%", u"A", u"B", u"<", u">", u"%", u"x", u"<A", u"B%", u"", u"\\"};
    std::mt19937 random(2018);
    const auto pick = [&](int count) {
        Text text;
        while (count-- > 0)
            text += pieces[random() % pieces.size()];
        return text;
    };
    for (int round = 0; round < 20000; ++round) {
        const Text text = pick(int(random() % 8));
        std::vector<std::optional<Text>> values;
        for (std::size_t i = 0; i < tokens.size(); ++i)
            values.push_back(random() % 6 == 0 ? std::optional<Text>() : pick(int(random() % 3)));
        Text plain = text;
        for (std::size_t i = 0; i < tokens.size(); ++i) {
            if (values[i])
                replaceAll(plain, tokens[i], *values[i]);
        }
        Text filled;
        TokenTemplate(text, tokens).appendTo(filled, values);
        ASSERT_EQ(filled, plain) << toUtf8(text);
    }
}

} // namespace zn
