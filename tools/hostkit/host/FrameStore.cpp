#include "hostkit/host/FrameStore.h"

#include "hostkit/system/Text.h"

#include <algorithm>

// What a handle leads to. Opaque to plug-ins, so nothing but an address is kept in it.
struct PPix {
    void* unused = nullptr;
};

namespace hostkit {

namespace {

std::string describe(const FrameView& view) {
    return codeText(view.format) + ", " + std::to_string(view.width()) + " x " + std::to_string(view.height());
}

}  // namespace

struct FrameStore::Frame {
    PPix target;
    PPix* slot = &target;
    GuardedBlock pixels;
    FrameView view;
    csSDK_int64 serialNumber;

    Frame(const FrameView& shape, std::size_t size, std::uint8_t fill, csSDK_int64 serial)
        : pixels(size, fill), view(shape), serialNumber(serial) {
        view.pixels = pixels.data();
        view.size = size;
    }
};

FrameStore::FrameStore(RowBytesPolicy policy, std::function<void(std::string)> report)
    : m_policy(policy), m_report(std::move(report)) {}

FrameStore::~FrameStore() = default;

prSuiteError FrameStore::create(PPixHand& out, PrPPixBufferAccess access, PrPixelFormat format, const prRect& bounds) {
    out = nullptr;
    const PixelFormatRow* row = findPixelFormat(format);
    FrameView shape{.format = format, .access = access, .bounds = bounds};
    const auto size = row ? frameBytes(*row, shape.width(), shape.height(), m_policy) : std::nullopt;
    if (!size) {
        return kSuiteInvalidParms;
    }
    shape.rowBytes = rowBytes(*row, shape.width(), m_policy).value_or(0);

    const std::lock_guard lock(m_mutex);
    auto frame = std::make_unique<Frame>(shape, static_cast<std::size_t>(*size), m_fill, ++m_created);
    out = &frame->slot;
    m_frames.emplace(out, std::move(frame));
    return kSuiteNoError;
}

prSuiteError FrameStore::clone(PPixHand source, PPixHand& out, PrPPixBufferAccess access) {
    out = nullptr;
    const std::optional<FrameView> original = view(source);
    if (!original) {
        return kSuiteInvalidParms;
    }
    const prSuiteError result = create(out, access, original->format, original->bounds);
    if (const std::optional<FrameView> copy = view(out)) {
        std::copy_n(original->pixels, original->size, copy->pixels);
    }
    return result;
}

prSuiteError FrameStore::dispose(PPixHand frame) {
    std::unique_ptr<Frame> ended;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_frames.find(frame);
        if (found != m_frames.end()) {
            ended = std::move(found->second);
            m_frames.erase(found);
            ++m_disposed;
        }
    }
    if (!ended) {
        m_report("A frame was disposed that the host never gave out, or twice.");
        return kSuiteInvalidParms;
    }
    if (!ended->pixels.guardsAreIntact()) {
        m_report("A frame (" + describe(ended->view) + ") was overrun.");
    }
    return kSuiteNoError;
}

std::optional<FrameView> FrameStore::view(PPixHand frame) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_frames.find(frame);
    return found == m_frames.end() ? std::nullopt : std::optional(found->second->view);
}

std::optional<csSDK_int64> FrameStore::serialNumber(PPixHand frame) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_frames.find(frame);
    return found == m_frames.end() ? std::nullopt : std::optional(found->second->serialNumber);
}

int FrameStore::created() const {
    const std::lock_guard lock(m_mutex);
    return m_created;
}

int FrameStore::disposed() const {
    const std::lock_guard lock(m_mutex);
    return m_disposed;
}

int FrameStore::alive() const {
    const std::lock_guard lock(m_mutex);
    return static_cast<int>(m_frames.size());
}

std::vector<std::string> FrameStore::problems() const {
    const std::lock_guard lock(m_mutex);
    std::vector<std::string> sentences;
    for (const auto& [handle, frame] : m_frames) {
        sentences.push_back("A frame (" + describe(frame->view) + ") was never disposed" +
                            (frame->pixels.guardsAreIntact() ? "." : ", and it was overrun."));
    }
    return sentences;
}

}  // namespace hostkit
