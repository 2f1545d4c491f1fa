// The exported functions. Each is a C boundary: it counts itself, fails if a test ordered that, and turns exceptions
// into result codes.
#include "codec/QuorvaneApi.h"
#include "standin/ControlState.h"
#include "standin/Library.h"
#include "standin/Names.h"
#include "standin/Request.h"
#include "standin/Result.h"
#include "standin/StreamFormat.h"

#include <cstring>
#include <new>
#include <span>

namespace {

using namespace standin;

std::span<const std::uint8_t> bytesAt(const void* address, std::uint32_t count) {
    return {static_cast<const std::uint8_t*>(address), count};
}

template <typename Body>
Result resultOf(const Body& body) noexcept {
    try {
        body();
        return Result::kOk;
    } catch (const Refusal& refusal) {
        return refusal.result();
    } catch (const std::bad_alloc&) {
        return Result::kOutOfMemory;
    } catch (...) {
        return Result::kInternal;
    }
}

std::uint32_t counted(StandinFunction function, std::uint32_t code) {
    if (code != 0)
        control().countFailure(function);
    return code;
}

// For calls that do nothing when made to fail.
template <typename Body>
std::uint32_t call(StandinFunction function, const Body& body) {
    const std::uint32_t ordered = control().enter(function);
    return counted(function, ordered != 0 ? ordered : static_cast<std::uint32_t>(resultOf(body)));
}

// For calls that release something: they do so even when made to fail, or tests would leak.
template <typename Body>
std::uint32_t releasingCall(StandinFunction function, const Body& body) {
    const std::uint32_t ordered = control().enter(function);
    const auto code = static_cast<std::uint32_t>(resultOf(body));
    return counted(function, ordered != 0 ? ordered : code);
}

// Occupies the handle's instance while `work` runs.
template <typename Work>
void onInstance(StandinFunction function, std::uint32_t handle, const Work& work) {
    OccupiedInstance instance(library().find(handle));
    control().visit(function);
    work(instance);
}

void noteOutput(const QuorvaneFormat* output) {
    require(output != nullptr, Result::kNullPointer);
    if (!isPreparedOutput(*output))
        control().countUnpreparedOutput();
}

StreamInfo streamAt(const void* compressedFormat, std::uint32_t count) {
    require(compressedFormat != nullptr || count == 0, Result::kNullPointer);
    return readExtraData(bytesAt(compressedFormat, count));
}

// True if a type has a capability; unknown types have none.
bool hasCapability(std::uint32_t parameter, std::uint32_t typeNumber) {
    const DecodeType* type = findDecodeType(typeNumber);
    return type != nullptr && (parameter == kQuorvaneCanFlip || type->bitDepth == 16);
}

void readParameter(std::uint32_t parameter, void* value, std::uint32_t size) {
    require(parameter == kQuorvaneCanFlip || parameter == kQuorvaneSupportsRange32768, Result::kParameterUnknown);
    require(value != nullptr, Result::kNullPointer);
    require(size == sizeof(std::uint32_t), Result::kParameterSize);
    std::uint32_t number = 0;
    std::memcpy(&number, value, sizeof number);
    number = hasCapability(parameter, number) ? 1 : 0;
    std::memcpy(value, &number, sizeof number);
}

void queryEncoder(const QuorvaneFormat* input, QuorvaneFormat* output, std::uint64_t* further) {
    require(input != nullptr && output != nullptr, Result::kNullPointer);
    const DecodeType* type = findDecodeType(input->type);
    require(type != nullptr, Result::kEncoderInput);
    QuorvaneFormat result = *input;
    result.type = type->compressedType;
    result.flags = 0;
    *output = result;
    if (further != nullptr)
        *further = 0;
}

void queryDecoder(const StreamInfo& info, const QuorvaneFormat* request, QuorvaneFormat& output) {
    output = request != nullptr ? describeDelivery(info, checkRequest(*request)) : describeStream(info);
}

void begin(OccupiedInstance& instance, const StreamInfo& info, const QuorvaneFormat* request, QuorvaneFormat& output) {
    require(!instance.hasSession(), Result::kSessionRunning);
    require(request != nullptr, Result::kRequestMissing);
    const Target target = checkRequest(*request);
    instance.begin(std::make_unique<Session>(info, target));
    output = describeDelivery(info, target);
}

void decode(const OccupiedInstance& instance, const void* frame, std::uint32_t size, const QuorvanePlane* planes) {
    require(instance.hasSession(), Result::kDecompressWithoutBegin);
    require(frame != nullptr && planes != nullptr, Result::kNullPointer);
    instance.session().decode(bytesAt(frame, size), planes);
}

void closeInstance(std::uint32_t handle) {
    onInstance(kStandinClose, handle, [handle](OccupiedInstance& instance) {
        if (instance.hasSession()) {
            control().countCloseWithSession();
            instance.end();
        }
        library().forget(handle);
    });
}

}  // namespace

extern "C" {

std::uint32_t quorvane_library_init() {
    return call(kStandinLibraryInit, [] { library().init(); });
}

std::uint32_t quorvane_library_close() {
    return releasingCall(kStandinLibraryClose, [] { library().close(); });
}

std::uint32_t quorvane_open(std::uint32_t* handle) {
    if (handle != nullptr)
        *handle = 0;
    return call(kStandinOpen, [handle] {
        require(handle != nullptr, Result::kNullPointer);
        *handle = library().open();
    });
}

std::uint32_t quorvane_close(std::uint32_t handle) {
    return releasingCall(kStandinClose, [handle] { closeInstance(handle); });
}

const char* quorvane_get_string(std::uint32_t category, std::uint32_t value) {
    const bool isToFail = counted(kStandinGetString, control().enter(kStandinGetString)) != 0;
    return isToFail ? unknownName(category) : nameOf(category, value);
}

std::uint32_t quorvane_get_param(std::uint32_t handle, std::uint32_t parameter, void* value, std::uint32_t size) {
    return call(kStandinGetParam, [=] {
        onInstance(kStandinGetParam, handle, [=](OccupiedInstance&) { readParameter(parameter, value, size); });
    });
}

std::uint32_t quorvane_compress_query(std::uint32_t handle, const QuorvaneFormat* input, QuorvaneFormat* output,
                                      std::uint64_t* further, void* /*reserved*/) {
    return call(kStandinCompressQuery, [=] {
        onInstance(kStandinCompressQuery, handle, [=](OccupiedInstance&) { queryEncoder(input, output, further); });
    });
}

std::uint32_t quorvane_decompress_query(std::uint32_t handle, const void* compressedFormat, std::uint32_t count,
                                        const QuorvaneFormat* request, QuorvaneFormat* output) {
    return call(kStandinDecompressQuery, [=] {
        onInstance(kStandinDecompressQuery, handle, [=](OccupiedInstance&) {
            noteOutput(output);
            queryDecoder(streamAt(compressedFormat, count), request, *output);
            if (request == nullptr)
                control().changeAnswer(kStandinDecompressQuery, *output);
        });
    });
}

std::uint32_t quorvane_decompress_begin(std::uint32_t handle, const void* compressedFormat, std::uint32_t count,
                                        const QuorvaneFormat* request, QuorvaneFormat* output) {
    return call(kStandinDecompressBegin, [=] {
        onInstance(kStandinDecompressBegin, handle, [=](OccupiedInstance& instance) {
            noteOutput(output);
            begin(instance, streamAt(compressedFormat, count), request, *output);
            control().changeAnswer(kStandinDecompressBegin, *output);
        });
    });
}

std::uint32_t quorvane_decompress(std::uint32_t handle, const void* frame, std::uint32_t size,
                                  const QuorvanePlane* planes) {
    return call(kStandinDecompress, [=] {
        onInstance(kStandinDecompress, handle,
                   [=](const OccupiedInstance& instance) { decode(instance, frame, size, planes); });
    });
}

std::uint32_t quorvane_decompress_end(std::uint32_t handle) {
    return releasingCall(kStandinDecompressEnd, [handle] {
        onInstance(kStandinDecompressEnd, handle, [](OccupiedInstance& instance) {
            require(instance.hasSession(), Result::kEndWithoutBegin);
            instance.end();
        });
    });
}

void standin_counters(StandinCounters* out) {
    if (out == nullptr)
        return;
    control().read(*out);
    out->outstandingInits = library().outstandingInits();
    out->openInstances = library().openInstances();
    out->runningSessions = runningSessions();
}

void standin_reset() {
    control().reset();
}

std::uint32_t standin_fail(std::uint32_t function, std::uint32_t nth, std::uint32_t count, std::uint32_t code) {
    return control().orderFailure(function, nth, count, code) ? 0 : 1;
}

std::uint32_t standin_visit(std::uint32_t function, void (*visitor)(void* context), void* context) {
    return control().orderVisit(function, visitor, context) ? 0 : 1;
}

std::uint32_t standin_answer(std::uint32_t function, std::uint32_t width, std::uint32_t height, std::uint32_t type) {
    return control().orderAnswer(function, width, height, type) ? 0 : 1;
}

}
