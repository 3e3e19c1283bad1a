#include "platform/desktop/x11/capture/X11FrameImporter.h"
#include "tests/desktop/MirrorParts.h"
#include "tests/desktop/harness/Wait.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>

namespace mirrolet::harness {
namespace {

using platform::desktop::FrameImporter;
using platform::desktop::PixelRect;
using platform::desktop::PixelSize;
using platform::desktop::SharedFrame;
using platform::desktop::SharedMemory;

/// Holds memory that another process can share.
class Memory {
  public:
    explicit Memory(std::size_t pixelCount) : bytes(pixelCount * sizeof(std::uint32_t)) {
        const int descriptor = memfd_create("frame", MFD_CLOEXEC);
        if (descriptor < 0 || ftruncate(descriptor, static_cast<off_t>(bytes)) != 0)
            throw HarnessError("no memory to share");
        pixels = static_cast<std::uint32_t*>(
            mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0));
        shared = {new SharedMemory{descriptor, bytes}, [](const SharedMemory* memory) {
                      close(memory->descriptor);
                      delete memory;
                  }};
    }
    ~Memory() { munmap(pixels, bytes); }
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    /// Numbers the pixels from `first` on, so that each pixel has a colour of its own.
    void number(std::uint32_t first) const {
        for (std::size_t i = 0; i < bytes / sizeof(std::uint32_t); ++i)
            pixels[i] = 0xff000000 | (first + static_cast<std::uint32_t>(i));
    }

    const std::size_t bytes;
    std::uint32_t* pixels = nullptr;
    std::shared_ptr<const SharedMemory> shared;
};

class FrameImporterTest : public testing::Test, protected MirrorParts {
  protected:
    /// Returns the picture that the frame's image must show if number(first) has filled the frame's memory.
    static Picture expected(const SharedFrame& frame, std::uint32_t first) {
        const auto& visible = frame.visible;
        Picture picture{visible.width, visible.height, {}};
        for (int y = visible.y; y < visible.y + visible.height; ++y)
            for (int x = visible.x; x < visible.x + visible.width; ++x)
                picture.pixels.push_back(
                    first + static_cast<std::uint32_t>((frame.offset + y * frame.stride) / 4 + x));
        return picture;
    }

    Image import(const SharedFrame& frame) { return importer->import(frame, nullptr); }

    std::unique_ptr<FrameImporter> importer = x11::X11FrameImporter::make(*connection);
};

TEST_F(FrameImporterTest, ShowsTheVisiblePartOfAFrameWhereverItLiesInItsMemory) {
    struct Row {
        const char* what;
        std::size_t offset;
        std::size_t stride;
        PixelSize size;
        PixelRect visible;
    };
    const Row rows[] = {
        {"all of the memory", 0, 256, {64, 48}, {0, 0, 64, 48}},
        {"padded rows", 0, 320, {64, 48}, {0, 0, 64, 48}},
        {"behind other data", 8192, 256, {64, 48}, {0, 0, 64, 48}},
        {"without a title bar", 4096, 320, {64, 48}, {2, 20, 60, 26}},
        {"a single pixel", 4, 256, {64, 48}, {63, 47, 1, 1}},
    };
    const Memory memory(8192);
    std::uint32_t first = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const SharedFrame frame{memory.shared, row.offset, row.stride, row.size, row.visible};
        memory.number(first += 100000);
        const auto image = import(frame);
        memory.number(0); // The sender may draw to the memory again.
        ASSERT_TRUE(image);
        EXPECT_EQ(pictureOf(image), expected(frame, first));
    }
}

TEST_F(FrameImporterTest, RefusesAFrameThatLeavesItsMemoryOrHasNoPixels) {
    constexpr auto huge = std::numeric_limits<std::size_t>::max();
    const Memory memory(64 * 48);
    const auto& shared = memory.shared;
    const PixelRect all{0, 0, 64, 48};
    const SharedFrame refused[] = {
        {nullptr, 0, 256, {64, 48}, all},
        {shared, 4, 256, {64, 48}, all},
        {shared, huge, 256, {64, 48}, all},
        {shared, 0, huge - 3, {64, 48}, all},
        {shared, 0, 255, {63, 48}, {0, 0, 63, 48}},
        {shared, 0, 0, {64, 48}, all},
        {shared, 0, 252, {64, 48}, all},
        {shared, 0, 256, {64, 49}, all},
        {shared, 0, 256, {64, 48}, {0, 0, 0, 48}},
        {shared, 0, 256, {64, 48}, {1, 0, 64, 48}},
        {shared, 0, 256, {64, 48}, {-1, 0, 64, 48}},
    };
    for (std::size_t i = 0; i < std::size(refused); ++i)
        EXPECT_EQ(import(refused[i]), nullptr) << i;
    for (const int descriptor : {-1, xcb_get_file_descriptor(connection->xcb())}) {
        const auto noMemory = std::make_shared<const SharedMemory>(SharedMemory{descriptor, memory.bytes});
        EXPECT_EQ(import({noMemory, 0, 256, {64, 48}, all}), nullptr) << descriptor;
    }
    EXPECT_TRUE(import({shared, 0, 256, {64, 48}, all}));
}

TEST_F(FrameImporterTest, KeepsOneObjectWhileNothingIsNewAndTakesAnotherSizeAtOnce) {
    const Memory memory(4096);
    EXPECT_EQ(importer->lastImage(nullptr), nullptr);
    memory.number(0);
    auto first = import({memory.shared, 0, 256, {64, 48}, {0, 0, 64, 48}});
    ASSERT_TRUE(first);
    EXPECT_EQ(importer->lastImage(nullptr), first);
    const SharedFrame larger{memory.shared, 0, 256, {64, 60}, {0, 0, 64, 60}};
    const auto second = import(larger);
    EXPECT_NE(second, first);
    EXPECT_EQ(pictureOf(second), expected(larger, 0));
    EXPECT_EQ(pictureOf(first).height, 48) << "a mirror may still show the old image";
}

TEST_F(FrameImporterTest, MakesAnotherImageOfTheLastFrameIfNobodyHoldsOne) {
    const Memory memory(4096);
    memory.number(7);
    const SharedFrame frame{memory.shared, 0, 256, {64, 48}, {0, 0, 64, 48}};
    import(frame);
    EXPECT_EQ(pictureOf(importer->lastImage(nullptr)), expected(frame, 7));
}

TEST_F(FrameImporterTest, HoldsMemoryOnTheServerOnlyWhileItsOwnerDoes) {
    const Memory kept(64 * 48);
    const SharedFrame frame{kept.shared, 0, 256, {64, 48}, {0, 0, 64, 48}};
    ASSERT_TRUE(import(frame));
    const auto before = resources();
    for (int i = 0; i < 20; ++i) {
        const Memory replaced(64 * 48);
        ASSERT_TRUE(import({replaced.shared, 0, 256, {64, 48}, {0, 0, 64, 48}}));
        ASSERT_TRUE(import(frame));
    }
    ASSERT_TRUE(import(frame));
    EXPECT_EQ(resources(), before);
    importer.reset();
    EXPECT_TRUE(waitUntil([&] { return resources() != before; }));
}

TEST_F(FrameImporterTest, SurvivesMemoryThatItsSenderMakesSmaller) {
    const Memory memory(64 * 48);
    const SharedFrame frame{memory.shared, 0, 256, {64, 48}, {0, 0, 64, 48}};
    ASSERT_TRUE(import(frame));
    ASSERT_EQ(ftruncate(memory.shared->descriptor, 0), 0);
    import(frame);
    import(frame);
    const Memory other(64 * 48);
    other.number(5);
    const SharedFrame next{other.shared, 0, 256, {64, 48}, {0, 0, 64, 48}};
    EXPECT_EQ(pictureOf(import(next)), expected(next, 5));
}

TEST(FrameImporterWithoutSharedMemoryTest, IsNotMade) {
    MirrorParts parts({.more = {"-extension", "MIT-SHM"}});
    EXPECT_EQ(x11::X11FrameImporter::make(*parts.connection), nullptr);
}

} // namespace
} // namespace mirrolet::harness
