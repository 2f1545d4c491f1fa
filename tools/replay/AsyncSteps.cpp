#include "replay/AsyncSteps.h"

#include "replay/LineScan.h"

#include <algorithm>

namespace replay {

namespace {

template <class PendingList>
auto findPending(PendingList& pending, const std::optional<csSDK_uint32>& frameIndex) {
    return std::ranges::find_if(
        pending, [&frameIndex](const auto& candidate) { return frameIndex && candidate.frameIndex == *frameIndex; });
}

std::string frameText(PrTime time, const std::vector<imFrameFormat>& formats) {
    return ", time " + std::to_string(time) + ", " + formatsText(formats);
}

}  // namespace

Step AsyncSteps::createStep(const LoggedCall& call, const Arguments& arguments) {
    if (!arguments.path || !arguments.fileStream) {
        return skippedStep(call.name, call.result ? "the log names no file" : kNotTold);
    }
    Step step{call.name + " " + printable(fileNameOf(*arguments.path)), {}, {}, {}};
    const ClipBook::Found found = m_clips.find(*arguments.path, *arguments.fileStream, false);
    if (!found.clip) {
        return skippedStep(step.text, m_files.reasonWithoutClip(*arguments.path));
    }
    if (found.candidates > 1) {
        step.assumed.push_back("the opening of the file that came last");
    }
    step.run = [this, clip = found.clip] {
        const auto importer = std::make_shared<AsyncImporter>(m_importer, clip);
        const csSDK_int32 result = importer->session.create().result;
        if (importer->session.isOpen()) {
            m_importers.push_back(importer);
        }
        return result;
    };
    return step;
}

Step AsyncSteps::step(const LoggedCall& call, const Arguments& arguments) {
    Step step{call.name, {}, {}, {}};
    const ImporterPtr importer = choose(call, arguments, step);
    if (!importer) {
        return skippedStep(step.text, "no asynchronous importer is open here");
    }
    step.text.append(" ").append(printable(fileNameOf(importer->clip->loggedPath)));
    switch (call.selector) {
    case aiInitiateAsyncRead: return announceStep(call, arguments, importer, std::move(step));
    case aiGetFrame: return getStep(call, arguments, importer, std::move(step));
    case aiFlush: return flushStep(importer, std::move(step));
    default: return closeStep(importer, std::move(step));
    }
}

AsyncSteps::ImporterPtr AsyncSteps::choose(const LoggedCall& call, const Arguments& arguments, Step& step) const {
    if (m_importers.size() > 1) {
        step.assumed.push_back("which asynchronous importer");
    }
    if (call.selector == aiGetFrame) {
        for (auto importer = m_importers.rbegin(); importer != m_importers.rend(); ++importer) {
            if (findPending((*importer)->pending, arguments.frameIndex) != (*importer)->pending.end()) {
                return *importer;
            }
        }
    }
    return m_importers.empty() ? nullptr : m_importers.back();
}

Step AsyncSteps::announceStep(const LoggedCall& call, const Arguments& arguments, const ImporterPtr& importer,
                              Step step) {
    if (!arguments.time && !call.result) {
        return skippedStep(step.text, kNotTold);
    }
    std::vector<imFrameFormat> formats = arguments.frameFormats.value_or(std::vector<imFrameFormat>());
    if (!arguments.frameFormats && !importer->pending.empty()) {
        formats = importer->pending.back().formats;
        step.assumed.push_back("the formats of the announcement before");
    } else if (!arguments.frameFormats) {
        step.assumed.push_back("no frame formats");
    }
    if (!arguments.time) {
        step.assumed.push_back("time 0");
    }
    const PrTime time = arguments.time.value_or(0);
    step.text += frameText(time, formats);
    step.run = [importer, time, formats, index = arguments.frameIndex.value_or(0)] {
        const csSDK_int32 result = importer->session.announce(time, formats).result;
        if (result == aiNoError) {
            importer->pending.push_back({index, formats});
        }
        return result;
    };
    return step;
}

Step AsyncSteps::getStep(const LoggedCall& call, const Arguments& arguments, const ImporterPtr& importer, Step step) {
    if (!arguments.time && !call.result) {
        return skippedStep(step.text, kNotTold);
    }
    const auto announced = findPending(importer->pending, arguments.frameIndex);
    std::vector<imFrameFormat> formats = arguments.frameFormats.value_or(std::vector<imFrameFormat>());
    if (!arguments.frameFormats && announced != importer->pending.end()) {
        formats = announced->formats;           // the plug-in uses those of the announcement
    } else if (!arguments.frameFormats) {
        step.assumed.push_back("no frame formats");
    }
    if (!arguments.time) {
        step.assumed.push_back("time 0");
    }
    const PrTime time = arguments.time.value_or(0);
    step.text += frameText(time, formats);
    step.run = [importer, time, formats, index = arguments.frameIndex] {
        if (const auto taken = findPending(importer->pending, index); taken != importer->pending.end()) {
            importer->pending.erase(taken);
        }
        return importer->session.get(time, formats).result;     // the frame is released at once
    };
    return step;
}

Step AsyncSteps::flushStep(const ImporterPtr& importer, Step step) {
    step.run = [importer] {
        importer->pending.clear();
        return importer->session.flush();
    };
    return step;
}

Step AsyncSteps::closeStep(const ImporterPtr& importer, Step step) {
    step.run = [this, importer] {
        std::erase(m_importers, importer);
        return importer->session.close();
    };
    return step;
}

}  // namespace replay
