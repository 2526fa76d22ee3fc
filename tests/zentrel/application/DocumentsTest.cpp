#include "tests/zentrel/application/Workshop.h"

#include "contracts/objectmodel/Enumerations.h"
#include "tests/support/Failures.h"

namespace zn::zentrel::test {

namespace {

using Documents = WorkshopTest;
using Members = WorkshopTest;

TEST_F(Documents, AreListedAnnouncedFoundByNameAndClosed)
{
    shop.makePart("A.zenprt", {u"Default"});
    shop.makePart("B.zenprt", {u"Default", u"Other"});
    const auto sink = std::make_shared<EventLog>();
    Text seen;
    sink->handler = [&](std::int32_t) {
        for (auto document = objectOf(*shop.application, u"GetFirstDocument"); document;
             document = objectOf(*document, u"GetNext"))
            seen += document->call(u"GetTitle").toText() + u" ";
        return zn::S_OK;
    };
    shop.application->advise(u"ApplicationEvents", sink);
    const auto a = shop.open(shop.path("A.zenprt"), DocumentKind::Part);
    const auto b = shop.open(shop.path("B.zenprt"), DocumentKind::Part);
    EXPECT_EQ(shop.open(shop.path("b.ZENPRT"), DocumentKind::Part), b) << "opened once, whatever the spelling";
    EXPECT_EQ(objectOf(*shop.application, u"ActivateDoc2", {Value(shop.path("A.zenprt")), true, 0}), a);
    EXPECT_THAT(sink->events,
        ElementsAre(u"22 " + shop.path("A.zenprt"), u"22 " + shop.path("B.zenprt"), u"7 " + shop.path("A.zenprt")));
    EXPECT_EQ(seen, u"A.zenprt A.zenprt B.zenprt A.zenprt B.zenprt ");

    shop.makePart("A.zenprt", {u"New"});
    std::filesystem::last_write_time(shop.file("A.zenprt"), std::filesystem::file_time_type::clock::now());
    const auto renewed = shop.open(shop.path("A.zenprt"), DocumentKind::Part);
    EXPECT_NE(renewed, a) << "left open, but changed since";
    EXPECT_EQ(
        objectOf(*objectOf(*renewed, u"ConfigurationManager"), u"ActiveConfiguration")->call(u"Name").toText(), u"New");

    const auto manager = objectOf(*b, u"ConfigurationManager");
    EXPECT_EQ(objectOf(*manager, u"ActiveConfiguration")->call(u"Name").toText(), u"Default");
    shop.application->call(u"QuitDoc", {Value(u"b.zenprt")});
    EXPECT_EQ(objectOf(*shop.application, u"GetFirstDocument"), renewed);
    EXPECT_EQ(objectOf(*renewed, u"GetNext"), nullptr);
    EXPECT_TRUE(shop.application->call(u"CloseAllDocuments", {true}).toBool());
    EXPECT_EQ(objectOf(*shop.application, u"GetFirstDocument"), nullptr);
    EXPECT_THROW(manager->call(u"ActiveConfiguration"), StatusError);
}

TEST_F(Documents, WhatCannotBeOpenedHasANumberAndASentence)
{
    shop.makePart("Good.zenprt", {u"Default"});
    writeFile(shop.file("Empty.zenprt"), "");
    writeFile(shop.file("Garbage.zenasm"), "this is no assembly");
    writeFile(shop.file("Garbage.step"), "this is no exchange file");
    writeFile(shop.file("Mystery.sat"), "400 0 1 0");
    const struct {
        std::string name;
        std::int32_t type; ///< 0: a foreign file
        Text configuration;
        std::int32_t errors;
        const char* sentence;
    } cases[] = {
        {"None.zenprt", 1, u"", LoadFileNotFound, "None.zenprt"},
        {"Empty.zenprt", 1, u"", LoadFileDamaged, "Empty.zenprt"},
        {"Garbage.zenasm", 2, u"", LoadFileDamaged, "Garbage.zenasm"},
        {"Good.zenprt", 2, u"", LoadInvalidFileType, "Good.zenprt"},
        {"Good.zenprt", 1, u"Gold", LoadUnknownConfiguration, "no configuration 'Gold'"},
        {"Garbage.step", 0, u"", LoadFileDamaged, "Garbage.step"},
        {"None.igs", 0, u"", LoadFileNotFound, "None.igs"},
        {"Mystery.sat", 0, u"", LoadInvalidFileType, "Mystery.sat"},
    };
    for (const auto& one : cases) {
        shop.log.clear();
        Value document;
        std::int32_t errors = 0;
        if (one.type == 0) {
            errors = callWithResults(
                *shop.application, u"LoadFile4", {Value(shop.path(one.name)), u"", ObjectRef(), 0}, &document)[3]
                         .toInt32();
        } else {
            const auto documentSpec = objectOf(*shop.application, u"GetOpenDocSpec", {Value(shop.path(one.name))});
            documentSpec->put(u"DocumentType", one.type);
            documentSpec->put(u"ConfigurationName", one.configuration);
            document = shop.application->call(u"OpenDoc7", {Value(documentSpec)});
            errors = documentSpec->call(u"Error").toInt32();
        }
        EXPECT_EQ(document.toObject(), nullptr) << one.name;
        EXPECT_EQ(errors, one.errors) << one.name;
        ASSERT_EQ(shop.log.size(), 1U) << one.name;
        EXPECT_THAT(shop.log[0], HasSubstr(one.sentence)) << one.name;
    }
    EXPECT_EQ(objectOf(*shop.application, u"GetFirstDocument"), nullptr);
    Value count;
    const auto messages = callWithResults(*shop.application, u"GetErrorMessages", {Value(), Value(), Value()}, &count);
    EXPECT_EQ(count, Value(8));
    EXPECT_THAT(zn::toUtf8((*messages[0].get<ArrayRef>())->elements[4].toText()), HasSubstr("'Gold'"));
}

TEST_F(Documents, AVirtualComponentIsADocumentWhileTheApplicationLives)
{
    shop.makeAssembly("Rack.zenasm");
    const auto assembly = shop.open(shop.path("Rack.zenasm"), DocumentKind::Assembly);
    const Value components = assembly->call(u"GetComponents", {true});
    const auto at = [&](std::size_t index) {
        return zn::query<DispatchObject>((*components.get<ArrayRef>())->elements.at(index).toObject());
    };
    EXPECT_FALSE(at(0)->call(u"IsVirtual").toBool());
    EXPECT_EQ(at(0)->call(u"GetPathName").toText(), shop.path("Plate.zenprt"));
    EXPECT_TRUE(at(1)->call(u"IsVirtual").toBool());
    const Text path = at(1)->call(u"GetPathName").toText();
    EXPECT_TRUE(path.ends_with(u"\\Bolt^Rack.zenprt")) << zn::toUtf8(path);
    EXPECT_EQ(at(1)->call(u"GetPathName").toText(), path);
    const auto bolt = shop.open(path, DocumentKind::Part);
    EXPECT_EQ(bolt->call(u"GetConfigurationCount").toInt32(), 2);
    const auto file = shop.platform.files().toMachine(path);
    EXPECT_TRUE(std::filesystem::exists(file));

    // Its name may hold the assembly's already.
    std::filesystem::copy_file(ZN_SOURCE_DIR "/samples/Stand.zenasm", shop.file("Other.zenasm"));
    const auto other = shop.open(shop.path("Other.zenasm"), DocumentKind::Assembly);
    const Value parts = other->call(u"GetComponents", {true});
    const auto pin = zn::query<DispatchObject>((*parts.get<ArrayRef>())->elements.back().toObject());
    EXPECT_TRUE(pin->call(u"GetPathName").toText().ends_with(u"\\Pin^Stand.zenprt"));

    shop.application.reset();
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Members, AreCalledByPlaceOrNameAndRefuseInWords)
{
    shop.makePart("Bar.zenprt", {u"Default"});
    const auto part = shop.open(shop.path("Bar.zenprt"), DocumentKind::Part);
    const auto extension = objectOf(*part, u"Extension");
    MemberCall named{u"saveas", MemberUse::Call,
        {Value(shop.path("Bar.sat")), Value(0), Value(7), Value(1), Value(ObjectRef()), Value(8)},
        {u"WARNINGS", u"Options", u"ExportData", u"errors"}};
    EXPECT_EQ(extension->invoke(named), Value(false));
    EXPECT_EQ(named.arguments[5], Value(256)) << "the result comes back in the named argument";

    const struct {
        MemberCall call;
        Status status;
        const char* sentence;
    } cases[] = {
        {{u"Explode", MemberUse::Call, {}, {}}, zn::DISP_E_MEMBERNOTFOUND,
            "There is no member 'Explode' in 'PartDoc'."},
        {{u"GetTitle", MemberUse::Put, {Value(1)}, {}}, zn::DISP_E_MEMBERNOTFOUND,
            "The property 'GetTitle' of 'PartDoc' cannot be used this way."},
        {{u"GetTitle", MemberUse::Call, {Value(1)}, {}}, zn::DISP_E_BADPARAMCOUNT,
            "Wrong number of arguments for 'GetTitle'."},
        {{u"ShowConfiguration", MemberUse::Call, {}, {}}, zn::DISP_E_BADPARAMCOUNT,
            "Wrong number of arguments for 'ShowConfiguration'."},
        {{u"ShowConfiguration", MemberUse::Call, {Value(u"x")}, {u"Sheet"}}, zn::DISP_E_MEMBERNOTFOUND,
            "'ShowConfiguration' takes no argument named 'Sheet' here."},
    };
    for (auto [call, status, sentence] : cases) {
        const auto raised = zn::test::raisedBy([&, &call = call] { part->invoke(call); });
        EXPECT_EQ(raised.status, status);
        EXPECT_EQ(raised.sentence, sentence);
    }
    EXPECT_THROW(shop.application->call(u"SetUserPreferenceToggle", {9999, true}), StatusError);
}

TEST_F(Documents, WhatIsToComeGoesToWhoeverReadsAhead)
{
    EXPECT_EQ(shop.application->facilities(), std::vector<Text>{u"ReadAhead"});
    const auto announce = [&] {
        shop.application->call(
            u"ReadAhead", {Value::arrayOf({Value(shop.path("b.step")), Value(shop.path("sub/../a.step"))})});
    };
    announce();
    EXPECT_EQ(shop.expected, (std::vector{shop.file("b.step"), shop.file("a.step")}));
    EXPECT_EQ(shop.expectedMesh, std::nullopt);

    // The files of a run want the same as those before.
    shop.makePart("Bar.zenprt", {u"Default"});
    const auto part = shop.open(shop.path("Bar.zenprt"), DocumentKind::Part);
    const auto meshAfter = [&](const char* output) {
        Value success;
        callWithResults(*objectOf(*part, u"Extension"), u"SaveAs",
            {Value(shop.path(output)), 0, SaveSilent, ObjectRef(), -1, -1}, &success);
        EXPECT_TRUE(success.toBool()) << output;
        announce();
        return shop.expectedMesh;
    };
    EXPECT_EQ(meshAfter("Bar.stl"), MeshQuality::Coarse);
    EXPECT_EQ(meshAfter("Bar.igs"), std::nullopt);
    EXPECT_EQ(meshAfter("Bar.wrl"), MeshQuality::Coarse);
    EXPECT_EQ(meshAfter("Bar.step"), std::nullopt);
}

} // namespace

} // namespace zn::zentrel::test
