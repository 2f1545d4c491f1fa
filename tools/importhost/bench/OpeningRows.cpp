#include "importhost/bench/OpeningRows.h"

#include "importhost/bench/RowBuilder.h"
#include "importhost/clips/VideoClip.h"

#include "hostkit/sessions/Names.h"

namespace importhost::bench {

namespace {

// After the first time the system has the file in memory, so the first time is separate.
void setTimes(Row& row, std::vector<double> times) {
    if (!times.empty()) {
        row.first = times.front();
        times.erase(times.begin());
    }
    row.waits = summaryOf(std::move(times));
}

}  // namespace

void measureOpening(Editor& editor, ReadCounter& counter, FileMeasurement& file) {
    std::vector<double> openings;
    std::vector<double> firstFrames;
    file.open.name = "open and describe";
    file.firstFrame.name = "first frame";
    for (int i = 0; i < kOpenings; ++i) {
        counter.start();
        const Stopwatch openWatch;
        VideoClip clip(editor, file.path);
        openings.push_back(openWatch.milliseconds());
        file.open.reads = counter.reads();

        counter.start();
        const Stopwatch frameWatch;
        const hostkit::FrameAnswer answer = clip.frame(0);
        const double waited = frameWatch.milliseconds();
        file.firstFrame.reads = counter.reads();
        if (answer.frame) {
            firstFrames.push_back(waited);
        } else if (file.firstFrame.failed++ == 0) {
            file.failures.push_back("Frame 0 failed (first frame): " + hostkit::resultText(answer.result) + ".");
        }
        expectNoInterrupt();
    }
    setTimes(file.open, std::move(openings));
    setTimes(file.firstFrame, std::move(firstFrames));
}

}  // namespace importhost::bench
