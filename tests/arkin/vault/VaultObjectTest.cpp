#include "arkin/vault/VaultObject.h"

#include "arkin/store/StoreCheck.h"
#include "base/Paths.h"
#include "contracts/host/ArkBatch.h"
#include "tests/arkin/VaultFixture.h"

#include <gmock/gmock.h>

namespace zn::arkin {
namespace {

using namespace test;
using namespace zn;
using zn::test::TemporaryFolder;

struct RunSeven : ActingRun {
    std::int32_t id() const override { return 7; }
    void requireHeld() override { }
    bool keepLocalCopies(std::span<const LocalCopyUse>) override { return true; }
    bool keepsIdentical() const override { return false; }
    void noteIdentical(std::int32_t, std::int32_t) override { }
    bool awaitRoom(const std::string&) override { return false; }
};

class VaultObjectTest : public VaultFixture {
protected:
    template <class Utility> std::shared_ptr<Utility> utility(ArkUtility kind)
    {
        ObjectRef object;
        EXPECT_EQ(vault->CreateUtility(kind, object), S_OK);
        return query<Utility>(object);
    }

    std::shared_ptr<IArkFile> file(const std::string& relative)
    {
        std::shared_ptr<IArkFile> object;
        EXPECT_EQ(vault->GetFileFromPath(test.path(relative), nullptr, object), S_OK) << relative;
        return object;
    }

    /// "name: sentence" of a status.
    std::string errorText(Status code)
    {
        Text name, description;
        EXPECT_EQ(vault->GetErrorText(code, name, description), S_OK);
        return toUtf8(name) + ": " + toUtf8(description);
    }

    std::vector<ArkAddResult> addAll(const std::vector<std::string>& relatives, std::int32_t& count)
    {
        const auto batch = utility<IArkBatchAdd>(ArkUtil_BatchAdd);
        for (const std::string& relative : relatives) {
            const std::string parent = std::filesystem::path(relative).parent_path();
            EXPECT_EQ(batch->AddFile(test.path(relative), test.path(parent), 0, nullptr, 0), S_OK);
        }
        std::vector<ArkAddResult> results;
        count = static_cast<std::int32_t>(relatives.size());
        EXPECT_EQ(batch->Commit(0, results, count), S_OK);
        return results;
    }

    void unlock(const std::vector<ArkFileFolderPair>& pairs, std::int32_t expectedCount, Status expected = S_OK)
    {
        const auto batch = utility<IArkBatchUnlock>(ArkUtil_BatchUnlock);
        std::int32_t count = -1;
        EXPECT_EQ(batch->SetComment(u"ZENTREL Task Add-in"), S_OK);
        EXPECT_EQ(batch->AddSelection(*vault, pairs), S_OK);
        EXPECT_EQ(batch->CreateTree(0, 1, 0, count), expected);
        if (expected != S_OK)
            return;
        EXPECT_EQ(count, expectedCount);
        EXPECT_EQ(batch->Unlock(0, 0), S_OK);
    }

    std::shared_ptr<VaultObject> vault = std::make_shared<VaultObject>(test.vault);
};

TEST_F(VaultObjectTest, CloseOutAddsFillsRefersAndChecksIn)
{
    const std::int32_t title = test.vault.cards().addVariable(u"Title");
    const Place source = test.addReleased("src/part.zenprt", "a part");
    test.vault.setRevision(source.fileId, u"B");
    test.vault.setWorkflowState(source.fileId, u"Approved");
    writeFile(test.local("out/part.stl"), "a mesh");
    writeFile(test.local("out/part.log"), "a log");

    std::int32_t count = 0;
    const auto results = addAll({"out/part.stl", "out/part.log", "out/never written.stl"}, count);
    ASSERT_EQ(results.size(), 3u);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(results[0].path, test.path("out/part.stl"));
    EXPECT_EQ(results[2].status, E_ARK_LOCAL_FILE_FAILED);
    EXPECT_EQ(errorText(results[2].status),
        "E_ARK_LOCAL_FILE_FAILED: Could not open " + test.local("out/never written.stl").string()
            + ": No such file or directory.");

    const auto card = utility<IArkBatchCardUpdate>(ArkUtil_BatchCardUpdate);
    std::vector<Status> errors;
    EXPECT_EQ(card->SetVariable(results[0].fileId, title, Value(u"Mesh; of part"), 0, 1), S_OK);
    EXPECT_EQ(card->Commit(errors, 0), S_OK);
    EXPECT_TRUE(errors.empty());

    const auto reference = utility<IArkBatchReference>(ArkUtil_BatchReference);
    bool needsCommit = true;
    EXPECT_EQ(reference->CreateTree(0, needsCommit), S_OK);
    EXPECT_FALSE(needsCommit) << "nothing was noted yet";
    EXPECT_EQ(reference->AddReferences(results[0].fileId, {source}), S_OK);
    EXPECT_EQ(reference->CreateTree(0, needsCommit), S_OK);
    EXPECT_TRUE(needsCommit);
    EXPECT_EQ(reference->Commit(needsCommit), S_OK);

    const std::vector<ArkFileFolderPair> pairs
        = {{results[0].fileId, results[0].folderId}, {results[1].fileId, results[1].folderId}, source};
    unlock(pairs, 2);

    std::int16_t checkedOut = -1;
    std::int32_t version = 0;
    const auto output = file("OUT/Part.stl");
    EXPECT_EQ(output->IsCheckedOut(checkedOut), S_OK);
    EXPECT_EQ(checkedOut, 0);
    EXPECT_EQ(output->GetCurrentVersion(version), S_OK);
    EXPECT_EQ(version, 1);
    EXPECT_TRUE(isReadOnly(test.local("out/part.stl")));

    std::shared_ptr<IArkVariableEnumerator> enumerator;
    ASSERT_EQ(output->GetVariableEnumerator(0, enumerator), S_OK);
    Value value;
    bool found = false;
    EXPECT_EQ(enumerator->GetVariable(u"TITLE", u"@", results[0].folderId, value, found), S_OK);
    EXPECT_TRUE(found);
    EXPECT_EQ(value, Value(u"Mesh; of part"));
    EXPECT_EQ(enumerator->GetVariable(u"Title", u"Default", results[0].folderId, value, found), S_OK);
    EXPECT_FALSE(found);
    EXPECT_EQ(enumerator->GetVariable(u"Unknown", u"@", results[0].folderId, value, found), E_ARK_NO_SUCH_VARIABLE);
    EXPECT_EQ(
        errorText(E_ARK_NO_SUCH_VARIABLE), "E_ARK_NO_SUCH_VARIABLE: The vault has no card variable named \"Unknown\".");

    std::vector<ObjectRef> values;
    std::vector<Text> configurations;
    ArkVersionInfo info;
    EXPECT_EQ(output->GetVersionInfo(Value(0), results[0].folderId, values, configurations, info), S_OK);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(configurations, std::vector<Text>{u"@"});
    const auto titleValue = query<IArkVariableValue>(values[0]);
    EXPECT_EQ(titleValue->GetValue(u"@", value), S_OK);
    EXPECT_EQ(value, Value(u"Mesh; of part"));
    EXPECT_EQ(titleValue->GetValue(u"", value), S_OK) << "a file without configurations is asked so";
    EXPECT_EQ(value, Value(u"Mesh; of part"));
    EXPECT_EQ(titleValue->GetValue(u"Default", value), S_FALSE);
    EXPECT_EQ(file("src/part.zenprt")->GetVersionInfo(Value(1), source.folderId, values, configurations, info), S_OK);
    EXPECT_EQ(toUtf8(info.revision + u"/" + info.workflowState), "B/Approved");
    EXPECT_EQ(file("src/part.zenprt")->GetVersionInfo(Value(2), source.folderId, values, configurations, info),
        E_ARK_NO_SUCH_VERSION);
    EXPECT_TRUE(checkStore(test.store).problems.empty());
}

TEST_F(VaultObjectTest, ANewVersionOfAnExistingOutputComesFromItsCheckIn)
{
    const Place place = test.addReleased("out/a.stl", "old");
    const auto output = file("out/a.stl");
    EXPECT_EQ(output->CheckOut(place.folderId, 0, 0), S_OK);
    EXPECT_EQ(output->CheckOut(place.folderId, 0, 0), E_ARK_CHECKED_OUT);
    EXPECT_EQ(errorText(E_ARK_CHECKED_OUT), "E_ARK_CHECKED_OUT: \"a.stl\" is checked out to you already.");
    writeFile(test.local("out/a.stl"), "new");
    unlock({place, place}, 1);
    std::int32_t version = 0;
    EXPECT_EQ(output->GetCurrentVersion(version), S_OK);
    EXPECT_EQ(version, 2);

    // Deleting and adding again begins with version 1; the name was free on the disk too.
    std::shared_ptr<IArkFolder> parent;
    std::shared_ptr<IArkFile> again;
    ASSERT_EQ(vault->GetFileFromPath(test.path("out/a.stl"), &parent, again), S_OK);
    EXPECT_EQ(parent->DeleteFile(0, place.fileId, -1), S_OK);
    EXPECT_FALSE(std::filesystem::exists(test.local("out/a.stl")));
    EXPECT_EQ(vault->GetFileFromPath(test.path("out/a.stl"), nullptr, again), S_FALSE);
    EXPECT_EQ(output->GetCurrentVersion(version), E_ARK_NOT_IN_VAULT);
    writeFile(test.local("out/a.stl"), "third");
    std::int32_t count = 0;
    const auto results = addAll({"out/a.stl"}, count);
    unlock({{results[0].fileId, results[0].folderId}}, 1);
    EXPECT_EQ(file("out/a.stl")->GetCurrentVersion(version), S_OK);
    EXPECT_EQ(version, 1);

    // A file that stands in the way tells its place, so that it can be checked in.
    writeFile(test.local("out/A.STL"), "another spelling");
    const auto taken = addAll({"out/A.STL"}, count);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(taken[0].status, E_ARK_NAME_ALREADY_EXISTS);
    EXPECT_EQ(taken[0].fileId, results[0].fileId);
}

TEST_F(VaultObjectTest, AFileThatFailsIsLeftOutOfItsBatchWithItsSentence)
{
    TestVault other(folder.path(), "bert");
    other.clock.time = 1520258829;
    const Place place = test.addReleased("out/a.stl", "a");
    const Place mine = test.addReleased("fine/m.stl", "m");
    test.vault.permissions().set(place.folderId, u"anna", {true, false, true});
    for (const char* name : {"out/b.stl", "out/c.stl", "fine/d.stl"})
        writeFile(test.local(name), name);
    std::int32_t count = 0;
    const auto batch = utility<IArkBatchAdd>(ArkUtil_BatchAdd);
    for (const char* name : {"out/b.stl", "out/c.stl", "fine/d.stl"})
        EXPECT_EQ(batch->AddFile(test.path(name), pathFolder(test.path(name)), 0, nullptr, 0), S_OK);
    EXPECT_EQ(batch->AddFile(test.path("fine/d.stl"), test.path("../other"), 0, nullptr, 0), S_OK);
    std::vector<ArkAddResult> results;
    EXPECT_EQ(batch->Commit(0, results, count = 4), S_OK);
    EXPECT_EQ(count, 1);
    ASSERT_EQ(results.size(), 4u);
    EXPECT_EQ(results[3].status, E_ARK_NOT_IN_VAULT);
    // Each result's sentence in turn, whatever was asked of the vault in between.
    for (const std::size_t i : {0, 1}) {
        EXPECT_EQ(results[i].status, E_ARK_PERMISSION_DENIED);
        std::shared_ptr<IArkFile> file;
        EXPECT_EQ(vault->GetFileFromPath(test.path("fine/m.stl"), nullptr, file), S_OK);
        EXPECT_EQ(errorText(E_ARK_PERMISSION_DENIED),
            "E_ARK_PERMISSION_DENIED: " + toUtf8(results[i].path)
                + ": anna has no permission to add files to the folder \\out.");
    }

    // One that somebody else has, and one whose local copy has gone, don't keep the third from coming in.
    const Place gone = test.addReleased("fine/e.stl", "e");
    checkOut(test.vault, mine);
    checkOut(test.vault, gone);
    std::filesystem::remove(test.local("fine/e.stl"));
    RunSeven seven;
    other.vault.actFor(&seven);
    checkOut(other.vault, place);
    const auto unlocking = utility<IArkBatchUnlock>(ArkUtil_BatchUnlock);
    EXPECT_EQ(unlocking->AddSelection(*vault, {place, gone, mine}), S_OK);
    EXPECT_EQ(unlocking->CreateTree(0, 1, 0, count), S_OK);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(unlocking->Unlock(0, 0), E_ARK_CHECKED_OUT_ELSEWHERE);
    EXPECT_THAT(errorText(E_ARK_CHECKED_OUT_ELSEWHERE),
        ::testing::MatchesRegex("E_ARK_CHECKED_OUT_ELSEWHERE: \"a.stl\" is checked out by bert on bench since "
                                "2018-03-0[56] [0-9:]* [-+0-9A-Z]*, for run 7\\.\r\n\t"
                                "The local copy .*/fine/e.stl is missing.*"));
    std::vector<ArkLeftOut> leftOut;
    EXPECT_EQ(query<IArkLeftOut>(unlocking)->GetLeftOut(leftOut), S_OK);
    ASSERT_EQ(leftOut.size(), 2u);
    EXPECT_EQ(leftOut[1].fileId, gone.fileId);
    EXPECT_EQ(test.vault.file(mine.fileId).latestVersion, 2);

    // References and card values likewise.
    checkOut(test.vault, mine);
    const std::int32_t title = test.vault.cards().addVariable(u"Title");
    const auto card = utility<IArkBatchCardUpdate>(ArkUtil_BatchCardUpdate);
    std::vector<Status> errors;
    for (const Place& each : {place, mine})
        EXPECT_EQ(card->SetVariable(each.fileId, title, Value(u"x"), 0, 1), S_OK);
    EXPECT_EQ(card->Commit(errors, 0), S_OK);
    EXPECT_EQ(errors, std::vector<Status>{E_ARK_CHECKED_OUT_ELSEWHERE});
    EXPECT_EQ(test.vault.cards().value(mine.fileId, 3, title, u"@"), Value(u"x"));
    const auto references = utility<IArkBatchReference>(ArkUtil_BatchReference);
    bool needsCommit = true;
    EXPECT_EQ(references->AddReferences(place.fileId, {gone}), S_OK);
    EXPECT_EQ(query<IArkVersionedReferences>(references)->AddReferenceToVersion(mine.fileId, mine, 1), S_OK);
    EXPECT_EQ(references->Commit(needsCommit), S_OK);
    EXPECT_EQ(test.vault.references().from(mine.fileId, 3).at(0).toVersion, 1);

    test.vault.permissions().set(place.folderId, u"anna", {false, false, false});
    std::shared_ptr<IArkFile> hidden;
    EXPECT_EQ(vault->GetFileFromPath(test.path("out/a.stl"), nullptr, hidden), E_ARK_PERMISSION_DENIED);
    Text name, description;
    EXPECT_EQ(vault->GetErrorText(statusCode(0x80049999), name, description), S_FALSE);
    EXPECT_EQ(vault->GetErrorText(E_ARK_NAME_ALREADY_EXISTS, name, description), S_OK);
    EXPECT_EQ(toUtf8(name + u": " + description),
        "E_ARK_NAME_ALREADY_EXISTS: A file of that name exists in the folder already.");
    ObjectRef object;
    EXPECT_EQ(vault->CreateUtility(static_cast<ArkUtility>(99), object), E_INVALIDARG);
}

TEST_F(VaultObjectTest, WalksFoldersAndVariables)
{
    test.addReleased("b.step", "b");
    test.addReleased("A.step", "a");
    const Place deep = test.addReleased("sub/x/deep.step", "deep");
    test.addReleased("closed/c.step", "c");
    test.vault.permissions().set(*test.vault.findFolder(test.path("closed")), u"anna", {false, true, true});
    test.vault.cards().addVariable(u"One");
    test.vault.cards().addVariable(u"Two");

    const std::function<std::string(IArkFolder&)> walk = [&](IArkFolder& parent) {
        std::string text;
        std::int32_t id = 0;
        parent.GetId(id);
        std::shared_ptr<IArkPosition> position;
        bool isNull = false;
        EXPECT_EQ(parent.GetFirstFilePosition(position), S_OK);
        for (std::shared_ptr<IArkFile> item; position->IsNull(isNull) == S_FALSE;) {
            Text path;
            EXPECT_EQ(parent.GetNextFile(*position, item), S_OK);
            EXPECT_EQ(item->GetLocalPath(id, path), S_OK);
            text += toUtf8(path.substr(test.path("").size())) + " ";
        }
        std::shared_ptr<IArkFile> none;
        EXPECT_EQ(parent.GetNextFile(*position, none), E_INVALIDARG);
        EXPECT_EQ(parent.GetFirstSubFolderPosition(position), S_OK);
        for (std::shared_ptr<IArkFolder> item; position->IsNull(isNull) == S_FALSE;) {
            EXPECT_EQ(parent.GetNextSubFolder(*position, item), S_OK);
            text += walk(*item);
        }
        return text;
    };
    std::shared_ptr<IArkFolder> root;
    Text rootPath;
    EXPECT_EQ(vault->GetRootFolderPath(rootPath), S_OK);
    ASSERT_EQ(vault->GetFolderFromPath(rootPath + u"\\", root), S_OK);
    EXPECT_EQ(walk(*root), "\\A.step \\b.step \\sub\\x\\deep.step ");
    std::shared_ptr<IArkFolder> none;
    EXPECT_EQ(vault->GetFolderFromPath(test.path("nowhere"), none), S_FALSE);
    EXPECT_EQ(vault->GetFolderFromPath(test.path("closed"), none), E_ARK_PERMISSION_DENIED);

    std::shared_ptr<IArkPosition> position;
    EXPECT_EQ(vault->GetFirstVariablePosition(position), S_OK);
    std::string names;
    bool isNull = false;
    for (std::shared_ptr<IArkVariable> variable; position->IsNull(isNull) == S_FALSE;) {
        Text name;
        EXPECT_EQ(vault->GetNextVariable(*position, variable), S_OK);
        variable->GetName(name);
        names += toUtf8(name) + " ";
    }
    EXPECT_EQ(names, "One Two ");

    const auto batch = utility<IArkBatchQuery>(ArkUtil_BatchQuery);
    for (const char* relative : {"sub/x/deep.step", "none.step", "../outside.step", "b.step"})
        EXPECT_EQ(batch->AddFile(Value(test.path(relative))), S_OK);
    std::vector<Text> columns;
    EXPECT_EQ(batch->CreateList(u"", columns), S_OK);
    std::vector<ArkQueryRow> rows;
    EXPECT_EQ(batch->GetRows(rows), S_OK);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].fileId, deep.fileId);
    EXPECT_EQ(rows[0].latestVersion, 1);
}

TEST_F(VaultObjectTest, FetchesReferencesByTheFlag)
{
    // Over a part that refers back to its assembly.
    const Place part = test.addReleased("lib/p.zenprt", "part 1");
    const Place middle = test.add("m.zenprt", "middle").place;
    const Place assembly = test.add("a.zenasm", "assembly").place;
    test.refer(assembly, {middle});
    test.refer(middle, {part, assembly});
    test.checkInAll({assembly, middle});
    test.change(part, "lib/p.zenprt", "part 2");
    for (const auto& [flag, content] : {std::pair(1, "part 1"), std::pair(0, "part 2")}) {
        const auto batch = utility<IArkBatchFetch>(ArkUtil_BatchFetch);
        EXPECT_EQ(batch->GetFiles(0, 0), E_FAIL) << "without a tree";
        EXPECT_EQ(batch->AddSelection(*vault, assembly.fileId, assembly.folderId, 0), S_OK);
        EXPECT_EQ(batch->CreateTree(0, flag), S_OK);
        EXPECT_EQ(batch->GetFiles(0, 0), S_OK);
        EXPECT_EQ(readFile(test.local("lib/p.zenprt")), content);
    }
    VaultObject stranger(test.vault);
    TemporaryFolder elsewhere;
    TestVault foreign(elsewhere.path());
    VaultObject otherVault(foreign.vault);
    const auto batch = utility<IArkBatchFetch>(ArkUtil_BatchFetch);
    EXPECT_EQ(batch->AddSelection(stranger, assembly.fileId, assembly.folderId, 0), S_OK) << "the same open vault";
    EXPECT_EQ(batch->AddSelection(otherVault, assembly.fileId, assembly.folderId, 0), E_INVALIDARG);
}

TEST_F(VaultObjectTest, AFileThatCannotBeFetchedKeepsOnlyItsUsersBack)
{
    const Place changed = test.addReleased("changed.zenprt", "changed");
    const Place hidden = test.addReleased("hidden/h.zenprt", "hidden");
    const Place child = test.addReleased("child.zenprt", "child");
    const Place middle = test.addReferring("middle.zenasm", {child});
    const Place top = test.addReferring("top.zenasm", {middle});
    const Place early = test.addReleased("early.zenprt", "early");
    const Place fine = test.addReleased("fine.zenprt", "fine");
    test.vault.permissions().set(hidden.folderId, u"anna", {false, true, true});
    for (const char* name : {"changed.zenprt", "child.zenprt"}) {
        std::filesystem::permissions(test.local(name), std::filesystem::perms::owner_all);
        writeFile(test.local(name), "by hand");
    }
    std::filesystem::remove(test.local("fine.zenprt"));

    const struct {
        Place place;
        std::int32_t version = 0;
        const char* sentence = "";
    } rows[] = {
        {changed, 0, "The local file .*/changed.zenprt holds changes .*"},
        {hidden, 0, "\"h.zenprt\": anna has no permission to read files of the folder .hidden\\."},
        {top, 0, "A file that it refers to is missing. The local file .*/child.zenprt holds changes .*"},
        {early, 9, "\"early.zenprt\" has no version 9; its latest is 1\\."},
    };
    const auto batch = utility<IArkBatchFetch>(ArkUtil_BatchFetch);
    for (const auto& row : rows)
        EXPECT_EQ(batch->AddSelection(*vault, row.place.fileId, row.place.folderId, row.version), S_OK);
    EXPECT_EQ(batch->AddSelection(*vault, fine.fileId, fine.folderId, 0), S_OK);
    EXPECT_EQ(batch->CreateTree(0, 0), S_OK);
    EXPECT_EQ(batch->GetFiles(0, 0), S_OK);
    EXPECT_EQ(readFile(test.local("fine.zenprt")), "fine");
    std::vector<ArkLeftOut> leftOut;
    EXPECT_EQ(query<IArkLeftOut>(batch)->GetLeftOut(leftOut), S_OK);
    ASSERT_EQ(leftOut.size(), std::size(rows));
    for (std::size_t i = 0; i < leftOut.size(); ++i) {
        EXPECT_EQ(leftOut[i].fileId, rows[i].place.fileId);
        EXPECT_THAT(toUtf8(leftOut[i].sentence), ::testing::MatchesRegex(rows[i].sentence));
    }

    const auto alone = utility<IArkBatchFetch>(ArkUtil_BatchFetch);
    EXPECT_EQ(alone->AddSelection(*vault, changed.fileId, changed.folderId, 0), S_OK);
    EXPECT_EQ(alone->CreateTree(0, 0), S_OK);
    EXPECT_EQ(alone->GetFiles(0, 0), E_ARK_LOCAL_FILE_CHANGED) << "where nothing could be brought";
}

} // namespace
} // namespace zn::arkin
