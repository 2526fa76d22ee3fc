#include "tests/arkin/VaultFixture.h"

#include "arkin/store/DeleteFile.h"
#include "arkin/store/StoreCheck.h"

namespace zn::arkin {
namespace {
using namespace test;

/// "version:content-size:comment" of each version.
std::string historyOf(Vault& vault, std::int32_t fileId)
{
    std::string text;
    for (const VersionRow& row : vault.files().history(fileId))
        text += std::to_string(row.version) + ":" + std::to_string(row.content.size) + ":" + zn::toUtf8(row.comment)
            + ":" + zn::toUtf8(row.user) + " ";
    return text;
}

std::vector<zn::Status> statusesOf(const std::vector<Failure>& outcomes)
{
    std::vector<zn::Status> statuses;
    for (const Failure& outcome : outcomes)
        statuses.push_back(outcome.status);
    return statuses;
}

std::string referencesOf(Vault& vault, std::int32_t fileId, std::int32_t version)
{
    std::string text;
    for (const ReferenceRow& row : vault.references().from(fileId, version))
        text += std::to_string(row.toFileId) + "@" + std::to_string(row.toVersion) + " ";
    return text;
}

/// A vault that is sound after whatever was done to it.
class VaultTest : public VaultFixture {
public:
    ~VaultTest() override { EXPECT_EQ(checkStore(test.store).problems, std::vector<std::string>()); }
};

TEST_F(VaultTest, AddedFileBecomesVersionOneAndLaterCheckInsTheNext)
{
    const AddOutcome outcome = test.add("Plates/Thin/plate.step", "first");
    ASSERT_EQ(outcome.status, zn::S_OK) << outcome.sentence;
    EXPECT_EQ(outcome.path, test.path("Plates/Thin/plate.step"));
    EXPECT_TRUE(test.vault.local().copies({&outcome.place, 1}).front()) << "the view knows what it shows";
    EXPECT_FALSE(isReadOnly(test.local("Plates/Thin/plate.step")));

    writeFile(test.local("Plates/Thin/plate.step"), "second");
    EXPECT_EQ(test.checkInAll({outcome.place}, u"begun").front().version, 1);
    EXPECT_TRUE(isReadOnly(test.local("Plates/Thin/plate.step")));
    EXPECT_EQ(historyOf(test.vault, outcome.place.fileId), "1:6:begun:anna ");
    expectStatus(E_ARK_NOT_CHECKED_OUT, [&] { requireMine(test.vault, outcome.place.fileId); });

    checkOut(test.vault, outcome.place);
    EXPECT_FALSE(isReadOnly(test.local("Plates/Thin/plate.step")));
    expectStatus(E_ARK_CHECKED_OUT, [&] { checkOut(test.vault, outcome.place); });
    writeFile(test.local("Plates/Thin/plate.step"), "the third");
    EXPECT_EQ(test.checkInAll({outcome.place}, u"changed").front().version, 2);
    EXPECT_EQ(historyOf(test.vault, outcome.place.fileId), "1:6:begun:anna 2:9:changed:anna ");
    EXPECT_EQ(test.checkInAll({outcome.place}).size(), 0u) << "nothing is checked out any more";

    get(outcome.place, 1);
    EXPECT_EQ(readFile(test.local("Plates/Thin/plate.step")), "second");
    EXPECT_TRUE(isReadOnly(test.local("Plates/Thin/plate.step")));
}

TEST_F(VaultTest, FindsFilesInAnySpellingAndKeepsNamesAsTheyAre)
{
    std::string longName = "n";
    while (longName.size() < 246)
        longName += "0123456789";
    const std::string names[] = {"it's 'quoted'.stl", "100% [sure] {#1} & x.stl", "Gröse 図面 \xF0\x9F\x94\xA7.stl",
        ";--; DROP TABLE files.stl", longName + ".stl", "a_b%c.stl", "aXbYc.stl"};
    for (const std::string& name : names) {
        const Place place = test.addReleased("Ünder/" + name, name);
        const zn::Text path = test.path("Ünder/" + name);
        EXPECT_EQ(test.vault.find(zn::toUpper(path)), place) << name;
        EXPECT_EQ(test.vault.pathOf(place), path);
        std::filesystem::remove(test.local("Ünder/" + name));
        get(place);
        EXPECT_EQ(readFile(test.local("Ünder/" + name)), name);
    }
    EXPECT_EQ(test.vault.find(test.path("Ünder/none.stl")), std::nullopt);
    EXPECT_EQ(test.vault.find(u"Z:\\elsewhere\\a.stl"), std::nullopt);
    EXPECT_EQ(test.vault.find(test.path("Ünder")), std::nullopt) << "a folder is no file";
    EXPECT_TRUE(test.vault.findFolder(test.path("") + u"\\ÜNDER\\"));
    std::vector<zn::Text> listed;
    for (const FileRow& row : test.vault.files().inFolder(*test.vault.findFolder(test.path("Ünder"))))
        listed.push_back(row.name);
    EXPECT_EQ(listed.size(), std::size(names));
}

TEST_F(VaultTest, EachFailedAdditionIsToldAndTheOthersGoIn)
{
    const Place standing = test.addReleased("out/a.stl", "a");
    test.vault.createFolder(test.path("closed"));
    test.vault.permissions().set(*test.vault.findFolder(test.path("closed")), u"anna", {true, false, true});
    writeFile(folder / "source.stl", "new");
    writeFile(test.local("out/foreign.stl"), "somebody's work");
    const zn::Text source = test.path("../source.stl");
    const zn::Text out = test.path("out");
    const AddRequest requests[] = {
        {source, out, u"good.stl"},
        {source, out, u"A.STL"},
        {source, out, u"GOOD.stl"},
        {source, test.path("closed/deeper"), u"b.stl"},
        {test.path("../missing.stl"), out, u"c.stl"},
        {source, out, u"foreign.stl"},
        {source, out, u"bad\\name.stl"},
        {source, test.path("../elsewhere"), u"d.stl"},
        {test.path(".."), out, u"folder.stl"},
    };
    std::vector<zn::Status> statuses;
    const auto outcomes = addFiles(test.vault, requests);
    for (const AddOutcome& outcome : outcomes)
        statuses.push_back(outcome.status);
    EXPECT_EQ(statuses,
        (std::vector<zn::Status>{zn::S_OK, E_ARK_NAME_ALREADY_EXISTS, E_ARK_NAME_ALREADY_EXISTS,
            E_ARK_PERMISSION_DENIED, E_ARK_LOCAL_FILE_FAILED, E_ARK_LOCAL_FILE_CHANGED, E_ARK_BAD_NAME,
            E_ARK_NOT_IN_VAULT, E_ARK_LOCAL_FILE_FAILED}));
    EXPECT_EQ(outcomes[1].place, standing);
    EXPECT_EQ(outcomes[3].sentence, "anna has no permission to add files to the folder \\closed.");
    EXPECT_EQ(readFile(test.local("out/good.stl")), "new");
    EXPECT_EQ(readFile(test.local("out/foreign.stl")), "somebody's work");
    EXPECT_EQ(test.vault.files().inFolder(standing.folderId).size(), 2u);
}

TEST_F(VaultTest, NothingThatTheVaultDoesNotKnowIsOverwritten)
{
    const Place place = test.addReleased("a.stl", "one");
    std::filesystem::remove(test.local("a.stl"));
    writeFile(test.local("a.stl"), "my own");
    expectStatus(E_ARK_LOCAL_FILE_CHANGED, [&] { get(place); });
    expectStatus(E_ARK_LOCAL_FILE_CHANGED, [&] { checkOut(test.vault, place); });
    EXPECT_EQ(readFile(test.local("a.stl")), "my own");
    EXPECT_FALSE(test.vault.files().checkOut(place.fileId));

    // Who asks to check a changed copy in wants to have it in the vault.
    EXPECT_EQ(test.checkInAll({place}).front().version, 2);
    EXPECT_EQ(test.vault.files().version(place.fileId, 2)->content.size, 6);

    // A file that is checked out here keeps its changes through a get, and loses them by an undo, which asks for it.
    checkOut(test.vault, place);
    writeFile(test.local("a.stl"), "in work");
    get(place);
    EXPECT_EQ(readFile(test.local("a.stl")), "in work");
    undoCheckOut(test.vault, place.fileId);
    EXPECT_EQ(readFile(test.local("a.stl")), "my own");
    EXPECT_TRUE(isReadOnly(test.local("a.stl")));

    // An undo that can't put the copy back is done by the next one.
    checkOut(test.vault, place);
    std::filesystem::remove(test.local("a.stl"));
    writeFile(test.local("a.stl/in the way"), "");
    EXPECT_THROW(undoCheckOut(test.vault, place.fileId), zn::StatusError);
    EXPECT_FALSE(test.vault.files().checkOut(place.fileId));
    std::filesystem::remove_all(test.local("a.stl"));
    writeFile(test.local("a.stl"), "in work");
    undoCheckOut(test.vault, place.fileId);
    EXPECT_EQ(readFile(test.local("a.stl")), "my own");
    expectStatus(E_ARK_NOT_CHECKED_OUT, [&] { undoCheckOut(test.vault, place.fileId); });

    // Undoing an addition leaves the user's file alone.
    const Place added = test.add("b.stl", "just added").place, referring = test.add("c.stl", "c").place;
    test.refer(referring, {added});
    EXPECT_EQ(test.vault.references().to(added.fileId).size(), 1u);
    undoCheckOut(test.vault, added.fileId);
    EXPECT_TRUE(test.vault.references().from(referring.fileId, 1).empty());
    EXPECT_EQ(test.vault.find(test.path("b.stl")), std::nullopt);
    EXPECT_EQ(readFile(test.local("b.stl")), "just added");
}

TEST_F(VaultTest, CheckInIsAllOrNothing)
{
    TestVault other(folder.path(), "bert");
    const Place a = test.addReleased("a.stl", "a"), b = test.addReleased("b.stl", "b"),
                c = test.addReleased("c.stl", "c");
    checkOut(test.vault, a);
    checkOut(test.vault, b);
    writeFile(test.local("a.stl"), "a changed");
    std::filesystem::remove(test.local("b.stl"));
    expectStatus(E_ARK_LOCAL_FILE_MISSING, [&] { test.checkInAll({a, b}); });
    EXPECT_EQ(test.vault.file(a.fileId).latestVersion, 1);
    EXPECT_TRUE(test.vault.files().checkOut(a.fileId));

    checkOut(other.vault, c);
    expectStatus(E_ARK_CHECKED_OUT_ELSEWHERE, [&] { test.checkInAll({a, c}); });
    expectStatus(E_ARK_CHECKED_OUT_ELSEWHERE, [&] { undoCheckOut(other.vault, a.fileId); });
    // A check-out that is given up between the plan and the check-in, which others may then have.
    const CheckInPlan plan = planCheckIn(test.vault, std::vector{a});
    undoCheckOut(test.vault, a.fileId);
    expectStatus(E_ARK_NOT_CHECKED_OUT, [&] { checkIn(test.vault, plan, u""); });
    checkOut(other.vault, a);
    expectStatus(E_ARK_CHECKED_OUT_ELSEWHERE, [&] { checkIn(test.vault, plan, u""); });
    EXPECT_EQ(test.vault.file(a.fileId).latestVersion, 1);
    other.checkInAll({a});
    checkOut(test.vault, a);
    expectStatus(E_ARK_NOT_CHECKED_OUT, [&] { checkIn(test.vault, plan, u""); });
    EXPECT_EQ(test.vault.file(a.fileId).latestVersion, 2);
}

TEST_F(VaultTest, CardsAndReferencesBelongToVersions)
{
    Vault& vault = test.vault;
    const std::int32_t title = vault.cards().addVariable(u"Title"), date = vault.cards().addVariable(u"Date");
    EXPECT_EQ(vault.cards().addVariable(u"TITLE"), title);
    const Place part = test.addReleased("p.zenprt", "part");
    const Place output = test.add("p.stl", "mesh").place;
    test.refer(output, {part});
    const CardWrite first[] = {{output.fileId, title, u"@", zn::Value(u"von \"Größe\"")},
        {output.fileId, date, u"@", zn::Value(zn::DateValue{43164.588298611109})},
        {output.fileId, title, u"Long", zn::Value(1.5)}};
    EXPECT_EQ(statusesOf(writeCards(vault, first)), (std::vector<zn::Status>(3, zn::S_OK)));
    test.checkInAll({output});
    test.change(part, "p.zenprt", "part 2");
    EXPECT_EQ(referencesOf(vault, output.fileId, 1), std::to_string(part.fileId) + "@1 ");

    // A write that no file could take refuses all.
    const CardWrite mixed[] = {{output.fileId, title, u"@", zn::Value(u"late")},
        {output.fileId, 99, u"@", zn::Value(1)}, {part.fileId, title, u"@", zn::Value(1)}};
    checkOut(vault, output);
    EXPECT_EQ(statusesOf(writeCards(vault, mixed)),
        (std::vector<zn::Status>{zn::S_OK, E_ARK_NO_SUCH_VARIABLE, E_ARK_NOT_CHECKED_OUT}));
    EXPECT_EQ(vault.cards().value(output.fileId, 2, title, u"@"), std::nullopt);
    // A file that isn't checked out here is left out alone.
    const CardWrite half[] = {mixed[0], mixed[2]};
    EXPECT_EQ(statusesOf(writeCards(vault, half)), (std::vector<zn::Status>{zn::S_OK, E_ARK_NOT_CHECKED_OUT}));
    EXPECT_EQ(vault.cards().value(output.fileId, 2, title, u"@"), zn::Value(u"late"));

    // The next version takes over what isn't written, and a new reference to the same file replaces the old one.
    writeCard(output, title, u"@", u"second");
    test.refer(output, {part});
    EXPECT_EQ(vault.cards().value(output.fileId, 1, title, u"@"), zn::Value(u"von \"Größe\""));
    test.checkInAll({output});
    EXPECT_EQ(vault.cards().value(output.fileId, 2, title, u"@"), zn::Value(u"second"));
    EXPECT_EQ(vault.cards().value(output.fileId, 2, title, u"Long"), zn::Value(1.5));
    EXPECT_EQ(vault.cards().value(output.fileId, 2, date, u"@"), zn::Value(zn::DateValue{43164.588298611109}));
    EXPECT_EQ(referencesOf(vault, output.fileId, 1), std::to_string(part.fileId) + "@1 ");
    EXPECT_EQ(referencesOf(vault, output.fileId, 2), std::to_string(part.fileId) + "@2 ");

    // What was written before an undo is gone; files that come in together refer to each other's new versions.
    checkOut(vault, output);
    writeCard(output, title, u"@", u"second");
    undoCheckOut(vault, output.fileId);
    EXPECT_TRUE(vault.cards().values(output.fileId, 3).empty());
    checkOut(vault, output);
    checkOut(vault, part);
    const CheckInPlan plan = planCheckIn(vault, std::vector{output, part});
    writeCard(output, title, u"@", u"since the plan");
    checkIn(vault, plan, u"");
    EXPECT_EQ(vault.cards().value(output.fileId, 3, title, u"@"), zn::Value(u"since the plan"));
    EXPECT_EQ(vault.cards().value(output.fileId, 3, title, u"Long"), zn::Value(1.5));
    EXPECT_EQ(referencesOf(vault, output.fileId, 3), std::to_string(part.fileId) + "@3 ");
}

TEST_F(VaultTest, DeletedFilesFreeTheirNameAndStayForWhoRefersToThem)
{
    TestVault other(folder.path(), "bert");
    const Place old = test.addReleased("out/a.stl", "old");
    const std::int32_t second = test.vault.createFolder(test.path("second"));
    test.vault.shareFile(old.fileId, second);
    expectStatus(E_ARK_NAME_ALREADY_EXISTS, [&] { test.vault.shareFile(old.fileId, second); });
    test.vault.permissions().set(old.folderId, u"bert", {true, true, false});
    expectStatus(E_ARK_PERMISSION_DENIED, [&] { deleteFile(other.vault, old); });

    deleteFile(test.vault, old);
    EXPECT_FALSE(std::filesystem::exists(test.local("out/a.stl")));
    EXPECT_TRUE(test.vault.find(test.path("second/a.stl"))) << "the other folder still shows it";
    deleteFile(test.vault, {old.fileId, second});
    expectStatus(E_ARK_NOT_IN_VAULT, [&] { test.vault.file(old.fileId); });

    const Place fresh = test.addReleased("out/a.stl", "new");
    EXPECT_NE(fresh.fileId, old.fileId);
    EXPECT_EQ(historyOf(test.vault, fresh.fileId), "1:3:done:anna ");
    EXPECT_EQ(test.vault.files().history(old.fileId).size(), 1u);

    // A local copy with changes of its own is no copy of the file any more.
    std::filesystem::remove(test.local("out/a.stl"));
    writeFile(test.local("out/a.stl"), "mine");
    deleteFile(test.vault, fresh);
    EXPECT_EQ(readFile(test.local("out/a.stl")), "mine");
}

TEST_F(VaultTest, PermissionsComeFromTheNearestFolderAndHoldAtOnce)
{
    TestVault other(folder.path(), "bert");
    const Place open = test.addReleased("top/open/a.stl", "a"), closed = test.addReleased("top/b.stl", "b");
    test.vault.permissions().set(closed.folderId, u"bert", {false, false, false});
    test.vault.permissions().set(open.folderId, u"bert", {true, false, false});
    EXPECT_EQ(other.vault.find(test.path("top/open/a.stl")), open);
    expectStatus(E_ARK_PERMISSION_DENIED, [&] { other.vault.find(test.path("top/b.stl")); });
    const GetRequest request{closed, 0};
    expectStatus(E_ARK_PERMISSION_DENIED, [&] { getFiles(other.vault, {&request, 1}); });
    expectStatus(E_ARK_PERMISSION_DENIED, [&] { checkOut(other.vault, open); });
    expectStatus(E_ARK_PERMISSION_DENIED, [&] { other.vault.createFolder(test.path("top/open/new")); });
    EXPECT_TRUE(test.vault.find(test.path("top/b.stl")));
}

TEST_F(VaultTest, RefusesVaultsOfOneNameOrOverlappingFolders)
{
    expectStatus(E_ARK_NAME_ALREADY_EXISTS, [&] { test.store.createVault(u"TEST", test.path("../other")); });
    expectStatus(E_ARK_BAD_NAME, [&] { test.store.createVault(u"In", test.path("inside")); });
    expectStatus(E_ARK_BAD_NAME, [&] { test.store.createVault(u"Around", test.path("..")); });
    const VaultInfo second = test.store.createVault(u"Second", test.path("../other") + u"\\");
    EXPECT_EQ(test.store.findVault(u"second")->root, test.path("../other"));
    Vault vault(test.store, second);
    test.addReleased("a.stl", "a");
    EXPECT_EQ(vault.find(test.path("a.stl")), std::nullopt);
    writeFile(folder / "blocked", "a file in the folder's place");
    expectStatus(E_ARK_LOCAL_FILE_FAILED, [&] { test.store.createVault(u"Third", test.path("../blocked/x")); });
}
} // namespace
} // namespace zn::arkin
