// The importer's calls to the codec library, word for word.
#include "importer/support/ImporterTest.h"

#include "spy/SpyCodec.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

using hostkit::ClipSession;

namespace {

// The first query of a codec instance, without a request, which asks for the stream's description.
constexpr char kDescribe[] = "query 1 [51 53 5a] null into {0 0 254 1 0 0 0 0 0}";

class Spy : public ImporterTest {
protected:
    std::filesystem::path pluginPath() const override {
        return hostkit::PluginLibrary::programFolder() / "importer_spy" / hostkit::PluginLibrary::usualFileName();
    }

    void SetUp() override {
        ImporterTest::SetUp();
        forgetCalls();
    }

    template <class Function>
    static Function* function(const char* name) {
        void* address = hostkit::PluginLibrary::symbolOfLoadedLibrary(CODEC_LIBRARY_NAME, name);
        if (address == nullptr) {
            throw std::runtime_error("the plug-in has not loaded the codec library in its own folder");
        }
        return reinterpret_cast<Function*>(address);
    }

    static void forgetCalls() { function<decltype(spy_forget_calls)>("spy_forget_calls")(); }
    static void describe(const QuorvaneFormat& stream) { function<decltype(spy_describe)>("spy_describe")(&stream); }
    static void describeLater(const QuorvaneFormat& stream) {
        function<decltype(spy_describe_later)>("spy_describe_later")(&stream);
    }
    static void deliver(const QuorvaneFormat& format) { function<decltype(spy_deliver)>("spy_deliver")(&format); }
    static void acceptOnly(std::uint32_t type) { function<decltype(spy_accept_only)>("spy_accept_only")(type); }

    // The calls since the last call of this function.
    Lines calls() {
        std::istringstream text(function<decltype(spy_calls)>("spy_calls")());
        Lines lines;
        for (std::string line; std::getline(text, line);) {
            lines.push_back(line);
        }
        forgetCalls();
        return lines;
    }

    Bytes file(std::vector<Bytes> frames = {{0xF0, 0x0D}}) {
        return aviFile({videoStream({.extraData = Bytes{0x51, 0x53, 0x5A}, .frames = std::move(frames)})});
    }

    std::unique_ptr<ClipSession> clip() {
        auto opened = openClip("clip.avi", file());
        forgetCalls();
        return opened;
    }

    hostkit::FrameAnswer frame(ClipSession& clip, PrPixelFormat format) {
        return clip.frame(0, {frameFormat(format)});
    }
};

class SpyInAHostWithOddRows : public Spy {
protected:
    hostkit::HostProfile profile() const override { return hostkit::hostProfile("odd-rows"); }
};

// The handle in a call's line, after the function's name.
std::string handleOf(const std::string& line) {
    std::istringstream words(line);
    std::string function;
    std::string handle;
    words >> function >> handle;
    return handle;
}

// The line with `handle` replaced by `name`, if it is a call with this handle.
std::string withHandle(const std::string& line, const std::string& handle, const std::string& name) {
    const std::size_t at = line.find(' ');
    return handleOf(line) != handle ? line : line.substr(0, at + 1) + name + line.substr(at + 1 + handle.size());
}

}  // namespace

TEST_F(Spy, SeesDescriptionAndRequestsOnTwoInstances) {
    auto opened = openClip("clip.avi", file());
    const Lines seen = calls();
    ASSERT_EQ(seen.size(), 25u);
    const std::string own = handleOf(seen[2]);
    const std::string probe = handleOf(seen[5]);
    EXPECT_NE(own, probe);
    Lines named;
    for (const std::string& line : seen) {
        const bool isOwn = handleOf(line) == own;
        named.push_back(withHandle(line, isOwn ? own : probe, isOwn ? "1" : "2"));
    }
    const std::string request = "query 2 [51 53 5a] {0 0 254 1 ";
    const std::string output = "} into {0 0 254 1 0 0 0 0 0}";
    EXPECT_EQ(named, (Lines{"library_init", "open", kDescribe, "library_init", "open",
                            request + "4 1 1 1 0" + output,         // yuy2
                            request + "4 1 2 1 0" + output,         // yuy3
                            request + "5 1 1 1 0" + output,         // uyvy
                            request + "5 1 2 1 0" + output,         // uyv7
                            request + "50 1 1 1 0" + output,        // vuya
                            request + "50 1 2 1 0" + output,        // VUYA
                            request + "49 1 1 1 0" + output,        // vuyx
                            request + "49 1 2 1 0" + output,        // vux7
                            request + "2 1 2 2 0" + output,         // bgra
                            request + "19 1 2 2 0" + output,        // argb
                            request + "1 1 2 2 0" + output,         // bgrx
                            request + "16 1 2 2 0" + output,        // xrgb
                            request + "11 1 1 1 0" + output,        // v210
                            request + "11 1 2 1 0" + output,        // v211
                            request + "15 1 2 2 0" + output,        // RGB1
                            request + "31 3 2 2 0" + output,        // Bgra
                            request + "32 3 2 2 0" + output,        // Bgrx
                            "query 2 [51 53 5a] null into {0 0 254 1 0 0 0 0 0}", "close 2",
                            "library_close"}));
}

TEST_F(Spy, SeesTheSameRequestWhenASessionBegins) {
    auto opened = clip();
    EXPECT_EQ(frame(*opened, PrPixelFormat_BGRA_4444_16u).result, 0);
    const Lines seen = calls();
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(withHandle(seen[0], handleOf(seen[0]), "1"),
              "begin 1 [51 53 5a] {0 0 254 1 31 3 2 2 0} into {0 0 254 1 0 0 0 0 0}");
}

TEST_F(Spy, SeesTheBytesOfTheFrameAndTheHostsRows) {
    auto opened = clip();
    EXPECT_EQ(frame(*opened, PrPixelFormat_BGRA_4444_8u).result, 0);
    const Lines seen = calls();
    ASSERT_EQ(seen.size(), 2u);
    // Eight pixels of four bytes in rows rounded up to 128 bytes, four of them.
    EXPECT_EQ(withHandle(seen[1], handleOf(seen[1]), "1"),
              "decompress 1 [f0 0d] {address 128 512} {0 0 0} {0 0 0} {0 0 0}");
}

TEST_F(SpyInAHostWithOddRows, SeesTheHostsOddRows) {
    auto opened = clip();
    EXPECT_EQ(frame(*opened, PrPixelFormat_BGRA_4444_8u).result, 0);
    const Lines seen = calls();
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(withHandle(seen[1], handleOf(seen[1]), "1"),
              "decompress 1 [f0 0d] {address 45 180} {0 0 0} {0 0 0} {0 0 0}");
}

TEST_F(Spy, WritesIntoTheHostsFrame) {
    auto opened = clip();
    const auto answer = frame(*opened, PrPixelFormat_BGRA_4444_8u);
    ASSERT_TRUE(answer.frame.view());
    const auto view = *answer.frame.view();
    EXPECT_EQ(view.size, 512u);
    EXPECT_EQ(std::count(view.pixels, view.pixels + view.size, 0x5A), 512);
}

TEST_F(Spy, SeesASecondFrameWithoutAnotherBegin) {
    auto opened = openClip("clip.avi", file({{0xF0}, {0xF1, 0x02}}));
    frame(*opened, PrPixelFormat_BGRA_4444_8u);
    forgetCalls();
    EXPECT_EQ(opened->frame(10160640000, {frameFormat(PrPixelFormat_BGRA_4444_8u)}).result, 0);
    const Lines seen = calls();
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_NE(seen[0].find(" [f1 02] "), std::string::npos) << seen[0];
}

TEST_F(Spy, SeesTheExactSizeOfASmallFrameAfterABigOne) {
    auto opened = openClip("clip.avi", file({Bytes(500, 0xEE), {0x01}}));
    frame(*opened, PrPixelFormat_BGRA_4444_8u);
    forgetCalls();
    opened->frame(10160640000, {frameFormat(PrPixelFormat_BGRA_4444_8u)});
    EXPECT_NE(calls().at(0).find(" [01] "), std::string::npos);
}

TEST_F(Spy, SeesAnEndBeforeAnotherPixelFormatsBegin) {
    auto opened = clip();
    frame(*opened, PrPixelFormat_BGRA_4444_8u);
    forgetCalls();
    frame(*opened, PrPixelFormat_YUYV_422_8u_709);
    const Lines seen = calls();
    ASSERT_EQ(seen.size(), 3u);
    const std::string own = handleOf(seen[0]);
    EXPECT_EQ(seen[0], "end " + own);
    EXPECT_EQ(seen[1], "begin " + own + " [51 53 5a] {0 0 254 1 4 1 2 1 0} into {0 0 254 1 0 0 0 0 0}");
    EXPECT_EQ(handleOf(seen[2]), own);
}

TEST_F(Spy, SeesNoEndWhenTheClipIsClosed) {
    auto opened = openClip("clip.avi", file());
    const std::string own = handleOf(calls().at(2));
    frame(*opened, PrPixelFormat_BGRA_4444_8u);
    forgetCalls();
    opened->close();
    EXPECT_EQ(calls(), (Lines{"close " + own, "library_close"}));
}

TEST_F(Spy, SeesNothingOfQuietAndReopen) {
    auto opened = clip();
    opened->quiet();
    opened->open();
    EXPECT_EQ(calls(), Lines{});
}

TEST_F(Spy, GetsNoQueriesForAnUnknownType) {
    describe({8, 4, 254, 1, 117, 0, 1, 1, 0});
    ClipSession opened(session(), write("clip.avi", file()));
    opened.open();
    Lines lines = handlerLogOf([&] { EXPECT_EQ(opened.info(0).result, 5); });
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("Acquiring suite: "); });
    EXPECT_EQ(lines, (Lines{"fileInfoRec8P->streamIdx: 0", "VideoInfo::VideoInfo()",
                            "Compressed format info: 8 x 4, name 1:117 (117), name 3:1 (1), range: 1",
                            "Unknown compressed type: name 1:117 (117)", "VideoInfo::~VideoInfo()"}));
    const Lines seen = calls();
    ASSERT_EQ(seen.size(), 5u);
    EXPECT_EQ(Lines(seen.begin() + 3, seen.end()), (Lines{"close " + handleOf(seen[2]), "library_close"}));
}

TEST_F(Spy, MayReportAnUnknownTypeOnItsSecondInstance) {
    describeLater({8, 4, 254, 1, 117, 0, 1, 1, 0});
    ClipSession opened(session(), write("clip.avi", file()));
    opened.open();
    const Lines lines = handlerLogOf([&] { EXPECT_EQ(opened.info(0).result, 5); });
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], "Unknown compressed type: name 1:117 (117)");
    EXPECT_EQ(lines.back(), "VideoInfo::~VideoInfo()");
}

TEST_F(Spy, DeterminesTheOfferedFormatsInTableOrder) {
    describe({8, 4, 254, 1, 101, 0, 2, 2, 0});
    acceptOnly(50);
    auto opened = openClip("clip.avi", file());
    EXPECT_EQ(opened->pixelFormats(),
              (std::vector<PrPixelFormat>{PrPixelFormat_VUYA_4444_8u, PrPixelFormat_VUYA_4444_8u_709}));
}

TEST_F(Spy, ReportsNumbersThatAreLoggedSigned) {
    describe({8, 4, 254, 1, 103, 0, 0xFFFFFFFF, 0x80000000, 0});
    EXPECT_TRUE(contains(handlerLogOf([&] { openClip("clip.avi", file()); }),
                         "Compressed format info: 8 x 4, name 1:103 (103), name 3:4294967295 (-1), range: "
                         "-2147483648"));
}

TEST_F(Spy, ReportsOtherRangesThatAreLoggedAsLimited) {
    describe({8, 4, 254, 1, 103, 0, 1, 3, 0});
    auto opened = clip();
    EXPECT_TRUE(contains(handlerLogOf([&] { frame(*opened, PrPixelFormat_BGRA_4444_8u); }),
                         "Starting decompression: name 1:103 [name 3:1] [LIMITED] -> name 1:2 [name 3:2] (pr: "
                         "PrPixelFormat_BGRA_4444_8u [bgra]) [flipped]"));
}

TEST_F(Spy, DeterminesTheReportedSizeNotTheFile) {
    describe({640, 360, 254, 1, 103, 0, 1, 1, 0});
    auto opened = clip();
    const auto info = opened->info(0);
    EXPECT_EQ(info->vidInfo.imageWidth, 640);
    EXPECT_EQ(info->vidInfo.imageHeight, 360);
}

TEST_F(Spy, GetsNoBufferForASessionLargerThanTheFrame) {
    // It would write 64 rows into a buffer of four.
    for (const QuorvaneFormat& larger : {QuorvaneFormat{8, 64, 254, 1, 2, 1, 2, 2, 0}, {9, 4, 254, 1, 2, 1, 2, 2, 0}}) {
        deliver(larger);
        auto opened = clip();
        const Lines lines = handlerLogOf([&] { EXPECT_EQ(frame(*opened, PrPixelFormat_BGRA_4444_8u).result, 5); });
        EXPECT_EQ(lines.back(), "ERROR: the codec delivers " + std::to_string(larger.width) + " x " +
                                    std::to_string(larger.height) + ", more than the frame of 8 x 4");
        EXPECT_EQ(host().frames().created(), 0);
    }
}

TEST_F(Spy, FillsPartOfTheFrameInASmallerSession) {
    deliver({6, 3, 254, 1, 2, 1, 2, 2, 0});
    auto opened = clip();
    const auto answer = frame(*opened, PrPixelFormat_BGRA_4444_8u);
    ASSERT_EQ(answer.result, 0);
    EXPECT_EQ(answer.frame.view()->height(), 4);
    EXPECT_NE(calls().at(1).find(" {address 128 384} "), std::string::npos) << "three of its four rows";
    const Lines lines = handlerLogOf([&] {
        EXPECT_EQ(opened->frame(0, {frameFormat(PrPixelFormat_BGRA_4444_8u, 8, 4)}).result, 5);
    });
    EXPECT_EQ(lines.back(), "ERROR: frame size mismatch (8, 4) != (6, 3)") << "from now on the video has that size";
}
