// A picture for which there is no memory. This can be caused reliably on systems where a process can limit itself, and
// file systems that support holes.
#include "damage/catalogue/FilesOnDisk.h"
#include "damage/catalogue/Sighting.h"

#include "log/PluginRun.h"
#include "standin/Encoder.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <fstream>

namespace damage {

namespace {

using hostkit::ClipSession;
using Lines = std::vector<std::string>;

constexpr std::uint64_t kMiB = std::uint64_t{1} << 20;

// Limits the process to this many bytes of additional address space during its lifetime.
class MemoryLimit {
public:
    explicit MemoryLimit(std::uint64_t more) {
        getrlimit(RLIMIT_AS, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = addressBytes() + more;
        EXPECT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
    }
    ~MemoryLimit() { setrlimit(RLIMIT_AS, &m_before); }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

private:
    static std::uint64_t addressBytes() {
        std::uint64_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        return pages * 4096;
    }

    rlimit m_before{};
};

// Writes a file with a picture so large that its compressed frame may have a gigabyte, and has.
std::filesystem::path writeLargePicture(const std::filesystem::path& folder) {
    const Bytes extraData = standin::encodeExtraData({103, 8192, 8192, 1, 1});
    std::vector<aviwriter::Idx1Entry> entries = mediaEntries();
    entries[0].length = static_cast<std::uint32_t>(1024 * kMiB);
    const Bytes file = aviwriter::riff(
        "AVI ", {headers({streamList(videoHeader(), videoFormat(extraData)), soundList()}),
                 aviwriter::list("movi", mediaChunks()), aviwriter::idx1(entries)});
    const auto path = writeBytes(folder / "large.avi", file);
    std::filesystem::resize_file(path, 1025 * kMiB);
    return path;
}

}  // namespace

TEST(PictureMemory, WhenMissingMakesAPictureUnreadable) {
    TempFolder folder;
    PluginRun plugin;
    plugin.session().start();
    {
        ClipSession clip(plugin.session(), writeLargePicture(folder.folder()));
        ASSERT_EQ(clip.open().result, imNoErr);
        ASSERT_EQ(clip.info(0).result, imNoErr);
        plugin.newMessages();
        {
            const MemoryLimit limit(256 * kMiB);
            EXPECT_EQ(clip.frame(0, {{0, 0, PrPixelFormat_VUYX_4444_8u}}).result, imFileReadFailed);
        }
        EXPECT_EQ(damageLines(plugin.newMessages()),
                  Lines{"Failed to read frame from AVI: out of memory, size: 1073741824"});
    }
    plugin.session().shutdown();
    EXPECT_EQ(plugin.host().problems(), Lines{});
}

}  // namespace damage
