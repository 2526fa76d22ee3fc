#include "zentrel/formats/ReadAhead.h"
#include "platform/ContentCache.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/formats/CafTree.h"
#include "zentrel/formats/Read.h"
#include "zentrel/formats/Write.h"
#include "zentrel/kernel/KernelCache.h"

#include <thread>

using namespace zn::zentrel;
using namespace zn::zentrel::test;

namespace {

struct Ahead : FolderTest {
    Ahead()
    {
        setKernelCache(std::make_unique<zn::ContentCache>(folder / "cache", 1 << 24), {});
        for (const char* name : {"screw", "linkrods"})
            fs::copy("/usr/share/opencascade/data/step" / fs::path(name).concat(".step"), folder.path());
    }
    ~Ahead() override { setKernelCache({}, {}); }

    std::size_t blocks() const { return zn::ContentCache(folder / "cache", 1 << 24).amount().blocks; }
    /// What a test that fails waits in vain for, its time limit ends.
    void waitForBlocks(std::size_t wanted) const
    {
        while (blocks() < wanted)
            std::this_thread::yield();
    }
};

} // namespace

TEST_F(Ahead, whatComesIsReadBesideAndFoundWhenItIsOpened)
{
    zn::test::writeFile(folder / "note.txt", "no reader takes it");
    zn::test::writeFile(folder / "bad.step", "ISO-10303-21;broken");
    ReadAhead readers(2);
    readers.expect({folder / "note.txt", folder / "bad.step", folder / "gone.step", folder / "screw.step"});
    readers.expect({folder / "screw.step", folder / "linkrods.step"});
    waitForBlocks(2);
    EXPECT_EQ(distinctBodies(readForeign(folder / "screw.step")).size(), 1U);
    EXPECT_EQ(distinctBodies(readForeign(folder / "linkrods.step")).size(), 1U);
    EXPECT_EQ(blocks(), 2U);
    expectError(ErrorKind::Damaged, "is truncated", [&] { readForeign(folder / "bad.step"); });
}

TEST_F(Ahead, whatWillBeMeshedIsMeshedAsItsWriterWouldDo)
{
    ReadAhead readers(1);
    readers.expect({folder / "screw.step"}, MeshQuality::Coarse);
    waitForBlocks(2);
    const fs::path file = folder / "screw.step";
    const ModelRef model = ModelLoader().load(std::get<PartDocument>(readForeign(file)), file, u"Default");
    writeStl(*model, folder / "screw.stl", {.quality = MeshQuality::Coarse});
    EXPECT_EQ(blocks(), 2U);
    writeStl(*model, folder / "screw.stl", {.quality = MeshQuality::Fine});
    EXPECT_EQ(blocks(), 3U);
}

TEST_F(Ahead, readersEndWithWhoeverWantedThem)
{
    const auto children = [] { return zn::test::readFile("/proc/thread-self/children"); };
    const std::string before = children();
    {
        ReadAhead readers(2);
        EXPECT_EQ(children(), before) << "nothing is to come yet";
        readers.expect({folder / "screw.step", folder / "linkrods.step"});
        EXPECT_NE(children(), before);
    }
    EXPECT_EQ(children(), before);
    ReadAhead none(0);
    none.expect({folder / "screw.step"});
    EXPECT_EQ(children(), before);
}
