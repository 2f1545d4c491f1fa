// A whole import through the plug-in's exported function, with a host that tracks all resources: no file may cause a
// leak, and the good file that follows must import as before.
#include "targets/Target.h"

#include "aviwriter/Sample.h"
#include "host/EntryPoint.h"
#include "hostkit/sessions/ClipSession.h"
#include "log/Log.h"
#include "sdk/SdkImporterCodes.h"
#include "standin/Control.h"
#include "support/Expect.h"
#include "support/FaultyDisk.h"
#include "targets/ImportRun.h"

#include <string>
#include <vector>

namespace {

constexpr char kGoodName[] = "good.avi";
constexpr std::size_t kProfiles = 8;   // the first ones, which have everything that a clip needs

const fuzz::Bytes& goodFile() {
    static const fuzz::Bytes bytes = aviwriter::sampleBytes(
        {.width = 16, .height = 8, .frames = 2,
         .audio = {{.format = aviwriter::SampleFormat::float32, .channels = 1}}});
    return bytes;
}

// Mostly the access with which the editor opens files; sometimes read-write, which empties the file, or an invalid one.
csSDK_int32 accessOf(std::uint8_t settings) {
    switch (settings >> 5) {
    case 7: return kPrOpenFileAccess_ReadWrite;
    case 6: return 2;
    default: return kPrOpenFileAccess_ReadOnly;
    }
}

void expectOk(csSDK_int32 result, const char* call) {
    if (result != imNoErr) {
        fuzz::fail(std::string("the good file's ") + call + " returned " + std::to_string(result));
    }
}

// Pixels and samples of the good file, concatenated.
fuzz::Bytes importGoodFile(hostkit::ImporterSession& session) {
    fuzz::FaultyDisk::instance().put(kGoodName, goodFile());
    hostkit::ClipSession clip(session, kGoodName);
    expectOk(clip.open().result, "open");
    expectOk(clip.info(0).result, "info");
    const auto formats = clip.pixelFormats();
    fuzz::expect(!formats.empty(), "the good file offers no pixel format");
    const auto frame = clip.frame(0, {{0, 0, static_cast<csSDK_uint32>(formats.front())}});
    expectOk(frame.result, "frame");
    const auto view = frame.frame.view();
    fuzz::Bytes delivered;
    for (csSDK_int32 row = 0; row < view->height(); ++row) {
        const std::uint8_t* pixels = view->pixels + row * static_cast<std::ptrdiff_t>(view->rowBytes);
        delivered.insert(delivered.end(), pixels, pixels + view->width() * 2);
    }
    const auto sound = clip.audio(0, 100, 1);
    expectOk(sound.result, "sound");
    const auto* samples = reinterpret_cast<const std::uint8_t*>(sound.channels.at(0).data());
    delivered.insert(delivered.end(), samples, samples + 100 * sizeof(float));
    expectOk(clip.close(), "close");
    return delivered;
}

// The good file's data before any other file was imported.
const fuzz::Bytes& expectedOfGoodFile(hostkit::ImporterSession& session) {
    static const fuzz::Bytes expected = importGoodFile(session);
    return expected;
}

void expectNothingLeft(const hostkit::Host& host) {
    for (const std::string& problem : host.problems()) {
        fuzz::fail(problem);
    }
    fuzz::expect(fuzz::FaultyDisk::instance().openFiles() == 0, "a file is still open");
    StandinCounters codec;
    standin_counters(&codec);
    fuzz::expect(codec.outstandingInits == 0 && codec.openInstances == 0 && codec.runningSessions == 0,
                 "a codec instance is still open");
    fuzz::expect(codec.overlappingCalls == 0, "calls of the codec overlapped on one handle");
    fuzz::expect(codec.unpreparedOutputs == 0, "the codec got a record that was not prepared");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input = fuzz::splitInput({data, size});
    fuzz::Script script(input.script);
    const fileio::FileFaults faults = fuzz::readFaults(script, input.file.size());
    const std::uint8_t settings = script.next8();
    fuzz::FaultyDisk& disk = fuzz::FaultyDisk::instance();

    logSettings.enabled = (settings & 0x18) == 0x18;
    hostkit::Host host(hostkit::hostProfiles().at(settings % kProfiles));
    hostkit::ImporterSession session(host, xImportEntry);
    standin_reset();
    fuzz::expect(session.init().result == imNoErr, "the plug-in does not start");
    expectedOfGoodFile(session);

    disk.put(fuzz::kFuzzedName, input.file);
    disk.setFaults(faults);
    fuzz::ImportRun(session, input.file, accessOf(settings), script).run();

    disk.setFaults({});
    host.faults().clear();
    standin_reset();
    fuzz::expect(importGoodFile(session) == expectedOfGoodFile(session), "the good file imports to something else");
    fuzz::expect(session.shutdown() == imNoErr, "the plug-in does not end");
    expectNothingLeft(host);
    return 0;
}
