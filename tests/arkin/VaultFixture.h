#pragma once

#include "arkin/store/AddFiles.h"
#include "arkin/store/CheckIn.h"
#include "arkin/store/CheckOut.h"
#include "arkin/store/Codes.h"
#include "arkin/store/GetFiles.h"
#include "arkin/store/Vault.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/SqliteRegistry.h"
#include "platform/Sqlite.h"
#include "tests/support/Failures.h"
#include "tests/support/Files.h"
#include "tests/support/TestPlatform.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace zn::arkin::test {

using zn::test::expectStatus;
using zn::test::readFile;
using zn::test::sentenceOf;
using zn::test::writeFile;

/// Whether nobody may write the file, also for a superuser who could.
inline bool isReadOnly(const std::filesystem::path& path)
{
    using std::filesystem::perms;
    const perms writeBits = perms::owner_write | perms::group_write | perms::others_write;
    return (std::filesystem::status(path).permissions() & writeBits) == perms::none;
}

/// A vault "Test" in a folder, with the local view in "view" below it.
class TestVault {
public:
    explicit TestVault(const std::filesystem::path& folder, const std::string& user = "anna")
        : m_view(folder / "view")
        , m_registry(folder / "registry.sqlite")
        , m_files(m_registry)
        , store(zn::sqliteConnection(folder / "vault.db"), folder / "archive", m_files, clock)
        , vault(store, openOrCreate(), Caller{user, "bench"})
    {
    }

    std::filesystem::path local(const std::string& relative) const { return m_view / relative; }
    /// The backslash path of a file or folder of the local view.
    zn::Text path(const std::string& relative) { return m_files.fromMachine(m_view / relative); }

    /// Adds a new file of the local view and leaves it checked out.
    AddOutcome add(const std::string& relative, const std::string& content)
    {
        writeFile(local(relative), content);
        const std::filesystem::path whole(relative);
        const AddRequest request{
            path(relative), path(whole.parent_path().string()), zn::toText(whole.filename().string())};
        return addFiles(vault, {&request, 1}).front();
    }

    /// Adds a file and checks it in.
    Place addReleased(const std::string& relative, const std::string& content)
    {
        const AddOutcome outcome = add(relative, content);
        EXPECT_EQ(outcome.status, zn::S_OK) << outcome.sentence;
        checkInAll({outcome.place});
        return outcome.place;
    }

    /// A checked-in file that refers to others.
    Place addReferring(const std::string& relative, const std::vector<Place>& targets)
    {
        const Place place = add(relative, relative).place;
        refer(place, targets);
        checkInAll({place});
        return place;
    }
    /// Lets a checked-out file refer to others.
    void refer(const Place& from, const std::vector<Place>& targets)
    {
        for (const Place& target : targets) {
            const NewReference reference{from.fileId, target};
            addReferences(vault, {&reference, 1});
        }
    }

    std::vector<CheckedIn> checkInAll(const std::vector<Place>& places, zn::TextView comment = u"done")
    {
        return checkIn(vault, planCheckIn(vault, places), comment);
    }

    /// A new version with this content.
    void change(const Place& place, const std::string& relative, const std::string& content)
    {
        checkOut(vault, place);
        writeFile(local(relative), content);
        checkInAll({place});
    }

private:
    VaultInfo openOrCreate()
    {
        const auto known = store.findVault(u"Test");
        return known ? *known : store.createVault(u"Test", m_files.fromMachine(m_view));
    }

    std::filesystem::path m_view;
    zn::SqliteRegistry m_registry;
    zn::LinuxFileSystem m_files;

public:
    zn::test::StillClock clock;
    Store store;
    Vault vault;
};

/// One open vault.
class VaultFixture : public ::testing::Test {
protected:
    void get(const Place& place, std::int32_t version = 0)
    {
        const GetRequest request{place, version};
        getFiles(test.vault, {&request, 1});
    }
    Failure writeCard(const Place& place, std::int32_t variable, const char16_t* configuration, zn::Value value)
    {
        const CardWrite write{place.fileId, variable, configuration, std::move(value)};
        return writeCards(test.vault, {&write, 1}).front();
    }

    zn::test::TemporaryFolder folder;
    TestVault test{folder.path()};
};

} // namespace zn::arkin::test
