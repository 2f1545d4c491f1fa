// A file that shrinks while it is open. On Windows other programs cannot change the file of an open clip.
#include "audio/support/LoggedSoundTest.h"

#include <filesystem>

namespace {

class TruncatedFile : public LoggedSoundTest {
protected:
    static Bytes sound() { return noise({}, 1250); }
    static Bytes file() {
        const Bytes all = sound();
        const Bytes first(all.begin(), all.begin() + 1500);
        const Bytes second(all.begin() + 1500, all.begin() + 3000);
        const Bytes third(all.begin() + 3000, all.end());
        return soundFile(formatRecord({}), {first, second, third}, 1250);
    }
};

}  // namespace

TEST_F(TruncatedFile, IsReadToItsEnd) {
    SoundClip clip(session(), file());
    std::filesystem::resize_file(clip.path(), 1820 + 700);
    EXPECT_EQ(readingLog(clip, 0, 1024),
              (Lines{"reading : 0, 312, 1500", "reading : 1500, 1820, 1500", "importAudio: read error: 1500, read: 700",
                     "fill    : 1896"}));
}

TEST_F(TruncatedFile, IsSilentAfterItsEnd) {
    SoundClip clip(session(), file());
    std::filesystem::resize_file(clip.path(), 1820 + 700);
    Bytes left = sound();
    left.resize(2200);
    EXPECT_TRUE(holds(clip.audio(0, 1024, 2), referenceSound({}, left, 0, 1024)));
}

TEST_F(TruncatedFile, IsReadCompletelyOnceItIsRestored) {
    SoundClip clip(session(), file());
    std::filesystem::resize_file(clip.path(), 1000);
    clip.audio(0, 1024, 2);
    writeFile(clip.path(), file());
    EXPECT_TRUE(holds(clip.audio(-1, 226, 2), referenceSound({}, sound(), 1024, 226)));
}
