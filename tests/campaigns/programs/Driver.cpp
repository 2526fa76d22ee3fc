// What the crash test runs and looks at. Every content, comment and card value follows from a file's name and version,
// so that a later process can tell whether each is what it should be.
//
//   crash_driver setup HOME     makes a vault with files in it
//   crash_driver work HOME      adds, checks out, changes, checks in, undoes, deletes and moves; prints a line for each
//                               step that the vault has confirmed
//   crash_driver verify HOME STEPS   after `work` was interrupted with STEPS confirmed: nothing is lost, nothing is
//                               there twice, the step in between is done or not, but not by half
//   crash_driver finish HOME    the vault still takes check-ins

#include "arkin/store/DeleteFile.h"
#include "arkin/store/MoveFiles.h"
#include "arkin/store/StoreCheck.h"
#include "tests/arkin/VaultFixture.h"

#include <algorithm>
#include <iostream>

namespace {

using namespace zn::arkin;
using namespace zn::arkin::test;

constexpr int standing = 6; ///< files of the setup: "s0" to "s5"
constexpr int added = 20;   ///< files of one batch: "n0" to "n19", enough for the archive's way with many files

std::string contentOf(const std::string& name, int version)
{
    std::string content = name + " in version " + std::to_string(version) + "\n";
    // Larger than the archive's buffer for one file, so that a content takes several writes.
    const std::size_t size = name == "s0" ? 600'000 : 3'000;
    while (content.size() < size)
        content += content;
    return content;
}

class Failed : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

void expect(bool good, const std::string& what)
{
    if (!good)
        throw Failed(what);
}

class Driver {
public:
    explicit Driver(const std::filesystem::path& home)
        : m_test(home)
        , m_vault(m_test.vault)
        , m_variable(m_vault.cards().addVariable(u"Origin"))
    {
    }

    void setup()
    {
        for (int i = 0; i < standing; ++i)
            m_test.addReleased("s" + std::to_string(i), contentOf("s" + std::to_string(i), 1));
        for (const char* name : {"t0", "t1"})
            m_test.addReleased(std::string("deep/") + name, contentOf(name, 1));
    }

    void work()
    {
        addBatch();
        confirm();
        fillBatch();
        confirm();
        checkIn(m_vault, planCheckIn(m_vault, batch()), u"batch");
        confirm();
        for (const char* name : {"s0", "s1", "s2"})
            change(name, 2);
        confirm();
        m_test.checkInAll({place("s0"), place("s1"), place("s2")}, u"changed");
        confirm();
        change("s3", 2);
        undoCheckOut(m_vault, place("s3").fileId);
        confirm();
        deleteFile(m_vault, place("s4"));
        confirm();
        const std::int32_t root = m_vault.info().rootFolderId;
        const FolderMove folder{*m_vault.findFolder(m_test.path("deep")), root, u"moved"};
        moveInVault(m_vault, {}, {&folder, 1});
        confirm();
        const FileMove file{place("moved/t0"), root, u"renamed"};
        moveInVault(m_vault, {&file, 1}, {});
        confirm();
    }

    void verify(int confirmed)
    {
        requireSound();
        const int done = std::max(confirmed, stepsDone(confirmed));
        verifyAdded(done);
        for (int i = 0; i < standing; ++i)
            verifyStanding("s" + std::to_string(i), done);
        verifyMoved("t0", {"deep/t0", "moved/t0", "renamed"}, done < 8 ? 0 : done - 7);
        verifyMoved("t1", {"deep/t1", "moved/t1"}, done < 8 ? 0 : 1);
        requireSound();
        m_test.store.archive().setAside(neededContents(m_test.store.database()), INT64_MAX, 0);
        expect(checkStore(m_test.store).notes.empty(), "leftovers can't be set aside");
    }

    void finish()
    {
        const auto own = m_vault.find(m_test.path("s5"));
        expect(own.has_value(), "s5 is lost");
        const Place last = *own;
        change("s5", 2);
        expect(m_test.checkInAll({last}).size() == 1, "s5 was not checked in");
        for (const FileRow& row : m_vault.files().inFolder(last.folderId)) {
            const std::string name = zn::toUtf8(row.name);
            if (m_vault.files().checkOut(row.id))
                writeFile(m_test.local(name), contentOf(name, row.latestVersion + 1));
        }
        std::vector<Place> all;
        for (const FileRow& row : m_vault.files().inFolder(last.folderId))
            all.push_back({row.id, last.folderId});
        m_test.checkInAll(all);
        expect(checkStore(m_test.store).checkedOut == 0, "a file stays checked out");
        requireSound();
    }

private:
    void confirm() { std::cout << ++m_step << std::endl; }

    std::optional<Place> find(const std::string& name) { return m_vault.find(m_test.path(name)); }
    Place place(const std::string& name)
    {
        const auto found = find(name);
        expect(found.has_value(), name + " is not in the vault");
        return *found;
    }

    std::vector<Place> batch()
    {
        std::vector<Place> places;
        places.reserve(added);
        for (int i = 0; i < added; ++i)
            places.push_back(place("n" + std::to_string(i)));
        return places;
    }

    void addBatch()
    {
        std::vector<AddRequest> requests;
        for (int i = 0; i < added; ++i) {
            const std::string name = "n" + std::to_string(i);
            writeFile(m_test.local(name), contentOf(name, 1));
            requests.push_back({m_test.path(name), m_vault.local().root(), zn::toText(name)});
        }
        for (const AddOutcome& outcome : addFiles(m_vault, requests))
            expect(outcome.status == zn::S_OK, outcome.sentence);
    }

    void fillBatch()
    {
        std::vector<CardWrite> writes;
        std::vector<NewReference> references;
        const Place source = place("s5");
        for (const Place& file : batch()) {
            writes.push_back({file.fileId, m_variable, u"@", zn::Value(u"s5")});
            references.push_back({file.fileId, source});
        }
        writeCards(m_vault, writes);
        addReferences(m_vault, references);
    }

    void change(const std::string& name, int version)
    {
        const Place file = place(name);
        if (!m_vault.files().checkOut(file.fileId))
            checkOut(m_vault, file);
        writeFile(m_test.local(name), contentOf(name, version));
    }

    void requireSound()
    {
        const CheckReport report = checkStore(m_test.store);
        expect(report.problems.empty(), report.problems.empty() ? "" : report.problems.front());
    }

    /// How far the interrupted step after the confirmed ones has got: it is there as a whole or not at all.
    int stepsDone(int confirmed)
    {
        const auto version = [&](const char* name) { return m_vault.file(place(name).fileId).latestVersion; };
        switch (confirmed + 1) {
        case 1:
            return find("n0") ? 1 : 0;
        case 3:
            return m_vault.files().checkOut(place("n0").fileId) ? 2 : 3;
        case 5:
            return version("s0") == 2 ? 5 : 4;
        case 7:
            return find("s4") ? 6 : 7;
        case 8:
            return find("moved/t0") ? 8 : 7;
        case 9:
            return find("renamed") ? 9 : 8;
        default:
            return confirmed;
        }
    }

    void verifyAdded(int done)
    {
        for (int i = 0; i < added; ++i) {
            const std::string name = "n" + std::to_string(i);
            const auto file = find(name);
            expect(file.has_value() == (done >= 1), name + ": a part of a batch of additions");
            if (!file)
                continue;
            verifyHistory(name, *file, 1);
            expect(m_vault.files().checkOut(file->fileId).has_value() == (done < 3), name + ": a part of a check-in");
            expect((zn::toUtf8(m_vault.files().history(file->fileId)[0].comment) == "batch") == (done >= 3),
                name + ": a comment of a part of a check-in");
            if (done < 2)
                continue;
            expect(m_vault.cards().value(file->fileId, 1, m_variable, u"@") == zn::Value(u"s5"),
                name + ": its card value is lost");
            expect(m_vault.references().from(file->fileId, 1).size() == 1, name + ": its reference is lost");
        }
    }

    void verifyStanding(const std::string& name, int done)
    {
        const auto file = find(name);
        const bool isDeleted = name == "s4" && done >= 7;
        expect(file.has_value() != isDeleted, name + (isDeleted ? " is still there" : " is lost"));
        if (!file)
            return;
        const bool isChanged = name <= "s2" && done >= 5;
        verifyHistory(name, *file, isChanged ? 2 : 1);
        if (isChanged)
            expect(!m_vault.files().checkOut(file->fileId), name + ": checked in and still checked out");
    }

    /// At one place and at no other.
    void verifyMoved(const std::string& name, const std::vector<std::string>& places, int at)
    {
        for (std::size_t i = 0; i < places.size(); ++i) {
            const auto file = find(places[i]);
            expect(file.has_value() == (static_cast<int>(i) == at),
                places[i] + (file ? " is there although it was moved" : " is lost"));
            if (file)
                verifyHistory(name, *file, 1);
        }
    }

    void verifyHistory(const std::string& name, const Place& file, std::size_t versions)
    {
        const auto history = m_vault.files().history(file.fileId);
        expect(history.size() == versions, name + " has " + std::to_string(history.size()) + " versions");
        for (const VersionRow& row : history)
            expect(readFile(m_test.store.archive().pathOf(row.content.hash)) == contentOf(name, row.version),
                name + ": version " + std::to_string(row.version) + " has another content");
    }

    TestVault m_test;
    Vault& m_vault;
    std::int32_t m_variable;
    int m_step = 0;
};

} // namespace

int main(int count, char** arguments)
{
    if (count < 3) {
        std::cerr << "usage: crash_driver setup|work|verify|finish HOME [STEPS]\n";
        return 2;
    }
    try {
        const std::string command = arguments[1];
        Driver driver(arguments[2]);
        if (command == "setup")
            driver.setup();
        else if (command == "work")
            driver.work();
        else if (command == "verify")
            driver.verify(std::stoi(arguments[3]));
        else
            driver.finish();
        return 0;
    } catch (...) {
        try {
            throw;
        } catch (const Failed& failed) {
            std::cerr << failed.what() << '\n';
        } catch (...) {
            std::cerr << currentFailure().sentence << '\n';
        }
        return 1;
    }
}
