// The stand-in codec: a stream's extra data, and a frame decoded into a buffer of exactly the right size.
#include "targets/Target.h"

#include "codec/QuorvaneApi.h"
#include "hostkit/host/GuardedBlock.h"
#include "standin/Control.h"
#include "standin/DecodeTypes.h"
#include "support/Expect.h"
#include "support/Input.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

namespace {

using fuzz::expect;

constexpr std::uint8_t kUnwritten = 0xCD;
constexpr std::uint64_t kMostBufferBytes = 8u << 20;

QuorvaneFormat prepared() {
    QuorvaneFormat format;
    format.word2 = 254;
    format.word3 = 1;
    return format;
}

class Instance {
public:
    Instance() {
        quorvane_library_init();
        expect(quorvane_open(&m_handle) == 0 && m_handle != 0, "no instance opens");
    }
    ~Instance() {
        quorvane_close(m_handle);
        quorvane_library_close();
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    std::uint32_t handle() const { return m_handle; }

private:
    std::uint32_t m_handle = 0;
};

// True if `code` means success. Every failure must have a text of its own.
bool succeeded(std::uint32_t code) {
    expect(quorvane_get_string(kQuorvaneErrorText, code) != nullptr, "a code has no text");
    expect(code == 0 || (code & 0x80000000) != 0, "a failing code lacks its bit");
    return code == 0;
}

// Usually one of two valid values, seldom any other.
std::uint32_t mostly(std::uint32_t one, std::uint32_t other, fuzz::Script& script) {
    const std::uint8_t choice = script.next8();
    return choice > 240 ? choice : choice % 2 == 0 ? one : other;
}

// For one of the decode types, which `type` is then set to, or seldom for any other number.
QuorvaneFormat requestOf(fuzz::Script& script, const standin::DecodeType*& type) {
    QuorvaneFormat request = prepared();
    const std::uint8_t kind = script.next8();
    if (kind < 240) {
        type = &standin::decodeTypes()[kind % standin::decodeTypes().size()];
        request.type = type->number;
    } else {
        request.type = script.next8();
    }
    request.flags = script.next8() % 5;
    request.colorSpace = mostly(1, 2, script);
    request.range = mostly(2, 1, script);
    return request;
}

// Decodes into a buffer of exactly the stated size, with `padding` bytes after each row.
void decode(std::uint32_t handle, fuzz::ByteView frame, const QuorvaneFormat& stream, const standin::DecodeType& type,
            std::uint32_t padding) {
    const std::uint32_t needed = packedRowBytes(type, stream.width);
    const std::uint32_t rowBytes = needed + padding;
    const std::uint64_t size = std::uint64_t{rowBytes} * stream.height;
    if (size > kMostBufferBytes) {
        return;
    }
    const fuzz::Bytes copy(frame.begin(), frame.end());
    std::array<hostkit::GuardedBlock, 2> blocks = {hostkit::GuardedBlock(size, kUnwritten),
                                                   hostkit::GuardedBlock(size, kUnwritten)};
    std::array<std::uint32_t, 2> codes{};
    for (std::size_t i = 0; i < 2; ++i) {
        QuorvanePlane planes[4] = {};
        planes[0] = {reinterpret_cast<std::uintptr_t>(blocks[i].data()), rowBytes, static_cast<std::uint32_t>(size)};
        codes[i] = quorvane_decompress(handle, copy.data(), static_cast<std::uint32_t>(copy.size()), planes);
        expect(blocks[i].guardsAreIntact(), "the buffer was overrun");
        const bool wrote = std::any_of(blocks[i].data(), blocks[i].data() + size,
                                       [](std::uint8_t byte) { return byte != kUnwritten; });
        expect(succeeded(codes[i]) || !wrote, "a refused frame was written");
        for (std::uint64_t end = rowBytes; padding != 0 && end <= size; end += rowBytes) {
            expect(blocks[i].data()[end - 1] == kUnwritten, "bytes between rows were written");
        }
    }
    expect(codes[0] == codes[1] && std::memcmp(blocks[0].data(), blocks[1].data(), size) == 0,
           "decoding a frame again delivers other bytes");
}

void useSession(const Instance& instance, fuzz::ByteView extraData, fuzz::ByteView frame, fuzz::Script& script) {
    const auto count = static_cast<std::uint32_t>(extraData.size());
    const standin::DecodeType* type = nullptr;
    const QuorvaneFormat request = requestOf(script, type);
    QuorvaneFormat answer = prepared();
    const bool offered = succeeded(
        quorvane_decompress_query(instance.handle(), extraData.data(), count, &request, &answer));
    QuorvaneFormat delivered = prepared();
    const bool began = succeeded(
        quorvane_decompress_begin(instance.handle(), extraData.data(), count, &request, &delivered));
    expect(offered == began, "the results of query and begin differ");
    if (!began) {
        return;
    }
    if (type) {
        decode(instance.handle(), frame, delivered, *type, script.next8() % 20);
    }
    if (script.below(2) == 0) {   // an instance may also be closed with its session running
        expect(succeeded(quorvane_decompress_end(instance.handle())), "a session does not end");
    }
}

void askTheRest(const Instance& instance, fuzz::Script& script) {
    expect(quorvane_get_string(script.next8(), script.next32()) != nullptr, "a string is null");
    std::uint32_t value = script.next8();
    succeeded(quorvane_get_param(instance.handle(), script.next8(), &value, script.below(8)));
    QuorvaneFormat input = prepared();
    input.type = script.next8();
    QuorvaneFormat output = prepared();
    std::uint64_t further = 0;
    succeeded(quorvane_compress_query(instance.handle(), &input, &output, &further, nullptr));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input = fuzz::splitInput({data, size});
    fuzz::Script script(input.script);
    // 28 bytes are valid; the script may ask for another number.
    const std::size_t wanted = 28 + static_cast<std::size_t>(script.next8() % 7 == 6 ? script.below(9) : 0);
    const fuzz::ByteView extraData = input.file.first(std::min(input.file.size(), wanted));
    const fuzz::ByteView frame = input.file.subspan(extraData.size());
    {
        const Instance instance;
        QuorvaneFormat stream = prepared();
        if (succeeded(quorvane_decompress_query(instance.handle(), extraData.data(),
                                                static_cast<std::uint32_t>(extraData.size()), nullptr, &stream))) {
            expect(stream.width > 0 && stream.height > 0, "a stream has no size");
            useSession(instance, extraData, frame, script);
        }
        askTheRest(instance, script);
    }
    StandinCounters counters;
    standin_counters(&counters);
    expect(counters.openInstances == 0 && counters.outstandingInits == 0 && counters.runningSessions == 0,
           "an instance is left");
    return 0;
}
