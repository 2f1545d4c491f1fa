#include "mutator/StandinMutator.h"

#include "standin/CompressedTypes.h"
#include "standin/Encoder.h"
#include "standin/Residuals.h"
#include "standin/StreamFormat.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace fuzz {

namespace {

// Of generated pictures; sides that are only stated may have any length.
constexpr std::uint32_t kLongestSide = 40;

constexpr std::uint32_t kSides[] = {0, 1, 2, 3, 5, 6, 7, 12, 13, 16, 40, 255, 4096, 16383, 16384, 16385, 65536};

Bytes compressed(const Bytes& bytes, Random& random) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    Bytes out(size);
    compress2(out.data(), &size, bytes.data(), static_cast<uLong>(bytes.size()), static_cast<int>(random.below(10)));
    out.resize(size);
    return out;
}

standin::StreamInfo anyInfo(Random& random) {
    standin::StreamInfo info;
    do {
        info.type = 101 + static_cast<std::uint32_t>(random.below(18));
    } while (standin::findCompressedType(info.type) == nullptr);
    info.width = 1 + static_cast<std::uint32_t>(random.below(kLongestSide));
    info.height = 1 + static_cast<std::uint32_t>(random.below(kLongestSide));
    info.colorSpace = 1 + static_cast<std::uint32_t>(random.below(2));
    info.range = 1 + static_cast<std::uint32_t>(random.below(2));
    return info;
}

// Random codes, or all at one end of the range, where conversions clamp.
Bytes residualsOf(std::size_t size, Random& random) {
    Bytes residuals(size, static_cast<std::uint8_t>(random.next()));
    if (random.once(2)) {
        std::generate(residuals.begin(), residuals.end(), [&] { return static_cast<std::uint8_t>(random.next()); });
    }
    if (random.once(12)) {
        residuals.resize(random.below(size + 8));   // a plane that is too short or too long
    }
    return residuals;
}

// A valid stream, except that a plane is sometimes damaged.
Bytes newStream(Random& random) {
    const standin::StreamInfo info = anyInfo(random);
    const standin::TypeLayout layout = standin::typeLayout(info.type);
    std::array<Bytes, standin::kMaxPlanes> planes;
    standin::FramePlanes frame;
    frame.count = layout.planeCount;
    for (std::uint32_t i = 0; i < layout.planeCount; ++i) {
        const standin::Plane shape = standin::planeShape(layout, info.width, info.height, i);
        planes[i] = compressed(residualsOf(standin::residualBytes(shape, layout.bitDepth), random), random);
        frame.bytes[i] = planes[i];
    }
    Bytes stream = standin::writeExtraData(info);
    const Bytes frameBytes = standin::writeFrame(info, frame);
    stream.insert(stream.end(), frameBytes.begin(), frameBytes.end());
    return stream;
}

void set32(Bytes& stream, std::size_t position, std::uint32_t value) {
    if (position + sizeof value <= stream.size()) {
        std::memcpy(stream.data() + position, &value, sizeof value);
    }
}

// Sets the same side in the extra data and in the frame, so that both state a picture that the data does not hold.
void claimSide(Bytes& stream, Random& random) {
    const std::size_t which = random.below(2);
    const std::uint32_t side = random.anyOf(kSides);
    set32(stream, 12 + 4 * which, side);
    const std::size_t inFrame = standin::kExtraDataBytes + 12 + 2 * which;
    if (inFrame + 2 <= stream.size()) {
        std::memcpy(stream.data() + inFrame, &side, 2);
    }
}

}  // namespace

Bytes mutateStream(ByteView stream, Random& random) {
    Bytes changed(stream.begin(), stream.end());
    switch (random.below(4)) {
    case 0: return newStream(random);
    case 1: claimSide(changed, random); break;
    case 2: set32(changed, 4 * random.below(7), static_cast<std::uint32_t>(random.below(130))); break;
    default: {
        const std::size_t frameSize = changed.size() - std::min(changed.size(), standin::kExtraDataBytes);
        const auto stated = static_cast<std::uint32_t>(frameSize + random.below(3) - 1);
        set32(changed, standin::kExtraDataBytes + (random.once(2) ? 4 : 16 + 4 * random.below(4)), stated);
    }
    }
    return changed;
}

}  // namespace fuzz
