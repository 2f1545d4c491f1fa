// A stream selection that ends neither in success nor with a bad file: a codec of another version knows compressed
// types that the importer does not. This is a program of its own, because it loads another codec library.
#include "aviwriter/Sample.h"
#include "hostkit/sessions/ClipSession.h"
#include "importer/spy/SpyCodec.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace {

// Makes the codec library that the plug-in loaded describe every stream as `type` from now on.
void describeStreamsAs(std::uint32_t type) {
    void* address = hostkit::PluginLibrary::symbolOfLoadedLibrary(CODEC_LIBRARY_NAME, "spy_describe");
    ASSERT_NE(address, nullptr);
    const QuorvaneFormat stream = {32, 16, 254, 1, type, 0, 1, 1, 0};
    reinterpret_cast<decltype(&spy_describe)>(address)(&stream);
}

TEST(UnknownType, OfTheStreamIsTheCreationsResult) {
    TempFolder folder;
    const std::filesystem::path path = folder.folder() / "clip.avi";
    aviwriter::FileSink sink(path);
    aviwriter::writeSample({.width = 32, .height = 16, .frames = 2}, sink);
    sink.close();

    hostkit::Host host;
    const hostkit::PluginLibrary plugin(hostkit::PluginLibrary::programFolder() / "importer_spy" /
                                        hostkit::PluginLibrary::usualFileName());
    hostkit::ImporterSession session(host, plugin.entry());
    session.init();
    hostkit::ClipSession clip(session, path);
    EXPECT_EQ(clip.open().result, imNoErr);
    describeStreamsAs(104);
    EXPECT_EQ(clip.info(0).result, imNoErr);

    const int suites = host.suitesHeld();
    describeStreamsAs(117);
    hostkit::HostRecord<imAsyncImporterCreationRec> record;
    record->inPrivateData = clip.privateData();
    const auto created = session.exchangeFirst(imCreateAsyncImporter, std::move(record));
    EXPECT_EQ(created.result, imOtherErr);
    EXPECT_EQ(created.written, std::vector<hostkit::ByteRange>{});
    EXPECT_EQ(host.suitesHeld(), suites);

    clip.close();
    session.shutdown();
    EXPECT_EQ(host.problems(), std::vector<std::string>{});
}

}  // namespace
