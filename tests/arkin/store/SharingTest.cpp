#include "arkin/store/StoreCheck.h"
#include "tests/arkin/VaultFixture.h"
#include "tests/support/Children.h"

// Several processes on one vault at the same time.

namespace zn::arkin {
namespace {

using namespace test;
using zn::test::sumOfProcesses;
using zn::test::TemporaryFolder;

constexpr int processes = 3;
constexpr int rounds = 12;

TEST(Sharing, ANameIsGivenOnceAndAFileIsCheckedOutByOne)
{
    TemporaryFolder folder;
    {
        TestVault test(folder.path());
        test.addReleased("shared", "0");
    }
    // Everybody wants to add the same names, and to change the same file, with local views of the same folder.
    const int addedCount = sumOfProcesses(processes, [&](int process) {
        TestVault test(folder.path(), "user" + std::to_string(process));
        int added = 0;
        for (int round = 0; round < rounds; ++round) {
            writeFile(folder / ("source" + std::to_string(process)), "same content");
            const AddRequest request{test.path("../source" + std::to_string(process)), test.path("new/deep"),
                zn::toText("file" + std::to_string(round))};
            const AddOutcome outcome = addFiles(test.vault, {&request, 1}).front();
            if (outcome.status == zn::S_OK)
                ++added;
            else if (outcome.status != E_ARK_NAME_ALREADY_EXISTS)
                throw zn::StatusError(outcome.status, outcome.sentence);
        }
        return added;
    });
    EXPECT_EQ(addedCount, rounds);

    const int changes = sumOfProcesses(processes, [&](int process) {
        TestVault test(folder.path(), "user" + std::to_string(process));
        const Place shared = *test.vault.find(test.path("shared"));
        int made = 0;
        for (int round = 0; round < rounds; ++round) {
            try {
                checkOut(test.vault, shared);
            } catch (const zn::StatusError& error) {
                if (error.status() == E_ARK_CHECKED_OUT_ELSEWHERE || error.status() == E_ARK_LOCAL_FILE_CHANGED)
                    continue;
                throw;
            }
            writeFile(test.local("shared"), std::to_string(process) + "/" + std::to_string(round));
            test.checkInAll({shared});
            ++made;
        }
        return made;
    });
    TestVault test(folder.path());
    EXPECT_GT(changes, 0);
    EXPECT_EQ(test.vault.file(test.vault.find(test.path("shared"))->fileId).latestVersion, 1 + changes);
    EXPECT_EQ(test.vault.files().inFolder(*test.vault.findFolder(test.path("new/deep"))).size(), std::size_t{rounds});
    EXPECT_EQ(checkStore(test.store).problems, std::vector<std::string>());
}

} // namespace
} // namespace zn::arkin
