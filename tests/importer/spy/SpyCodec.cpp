#include "spy/SpyCodec.h"

#include <cstdio>
#include <cstring>
#include <optional>
#include <string>

namespace {

constexpr std::uint32_t kRefusal = 0x80000005;
constexpr std::uint8_t kDecodedByte = 0x5A;

struct Spy {
    std::string calls;
    QuorvaneFormat stream = {8, 4, 254, 1, 103, 0, 1, 1, 0};
    std::optional<QuorvaneFormat> later;
    QuorvaneFormat delivered = {};
    bool deliversOther = false;
    std::uint32_t onlyType = 0;
    std::uint32_t lastHandle = 0;
};

Spy& spy() {
    static Spy instance;
    return instance;
}

void note(const std::string& call) { spy().calls += call + "\n"; }

std::string words(const QuorvaneFormat* format) {
    if (format == nullptr) {
        return "null";
    }
    std::uint32_t values[9];
    std::memcpy(values, format, sizeof values);
    std::string text = "{";
    for (const std::uint32_t value : values) {
        if (text.size() > 1) {
            text += ' ';
        }
        text += std::to_string(value);
    }
    return text + "}";
}

std::string bytes(const void* data, std::uint32_t count) {
    std::string text = "[";
    for (std::uint32_t i = 0; i < count; ++i) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<const unsigned char*>(data)[i]);
        if (i > 0) {
            text += ' ';
        }
        text += digits;
    }
    return text + "]";
}

std::string planeText(const QuorvanePlane& plane) {
    std::string text = plane.address != 0 ? "{address " : "{0 ";
    text += std::to_string(plane.rowBytes);
    text += ' ';
    text += std::to_string(plane.size);
    text += '}';
    return text;
}

std::uint32_t answer(const QuorvaneFormat* request, QuorvaneFormat* output) {
    const QuorvaneFormat& stream = spy().stream;
    if (request == nullptr) {
        *output = stream;
        spy().stream = spy().later.value_or(stream);
        return 0;
    }
    if (spy().onlyType != 0 && spy().onlyType != request->type) {
        return kRefusal;
    }
    *output = *request;
    output->width = stream.width;
    output->height = stream.height;
    return 0;
}

}  // namespace

extern "C" {

const char* spy_calls() { return spy().calls.c_str(); }
void spy_forget_calls() { spy().calls.clear(); }
void spy_describe(const QuorvaneFormat* stream) { spy().stream = *stream; }
void spy_describe_later(const QuorvaneFormat* stream) { spy().later = *stream; }
void spy_accept_only(std::uint32_t type) { spy().onlyType = type; }

void spy_deliver(const QuorvaneFormat* delivered) {
    spy().deliversOther = delivered != nullptr;
    spy().delivered = delivered != nullptr ? *delivered : QuorvaneFormat{};
}

std::uint32_t quorvane_library_init() {
    note("library_init");
    return 0;
}

std::uint32_t quorvane_library_close() {
    note("library_close");
    return 0;
}

std::uint32_t quorvane_open(std::uint32_t* handle) {
    *handle = ++spy().lastHandle;
    note("open");
    return 0;
}

std::uint32_t quorvane_close(std::uint32_t handle) {
    note("close " + std::to_string(handle));
    return 0;
}

const char* quorvane_get_string(std::uint32_t category, std::uint32_t value) {
    static std::string text;
    text = "name " + std::to_string(category) + ":" + std::to_string(value);
    return text.c_str();
}

std::uint32_t quorvane_get_param(std::uint32_t handle, std::uint32_t parameter, void* value, std::uint32_t size) {
    std::uint32_t question = 0;
    std::memcpy(&question, value, sizeof question);
    note("get_param " + std::to_string(handle) + " " + std::to_string(parameter) + " of " + std::to_string(question) +
         " in " + std::to_string(size) + " bytes");
    return kRefusal;
}

std::uint32_t quorvane_compress_query(std::uint32_t handle, const QuorvaneFormat*, QuorvaneFormat*, std::uint64_t*,
                                      void*) {
    note("compress_query " + std::to_string(handle));
    return kRefusal;
}

std::uint32_t quorvane_decompress_query(std::uint32_t handle, const void* compressedFormat, std::uint32_t count,
                                        const QuorvaneFormat* request, QuorvaneFormat* output) {
    note("query " + std::to_string(handle) + " " + bytes(compressedFormat, count) + " " + words(request) + " into " +
         words(output));
    return answer(request, output);
}

std::uint32_t quorvane_decompress_begin(std::uint32_t handle, const void* compressedFormat, std::uint32_t count,
                                        const QuorvaneFormat* request, QuorvaneFormat* output) {
    note("begin " + std::to_string(handle) + " " + bytes(compressedFormat, count) + " " + words(request) + " into " +
         words(output));
    const std::uint32_t code = answer(request, output);
    if (code == 0 && spy().deliversOther) {
        *output = spy().delivered;
    }
    return code;
}

std::uint32_t quorvane_decompress(std::uint32_t handle, const void* frame, std::uint32_t size,
                                  const QuorvanePlane* planes) {
    std::string text = "decompress " + std::to_string(handle) + " " + bytes(frame, size);
    for (int number = 0; number < 4; ++number) {
        text += ' ';
        text += planeText(planes[number]);
    }
    note(text);
    std::memset(reinterpret_cast<void*>(static_cast<std::uintptr_t>(planes[0].address)), kDecodedByte, planes[0].size);
    return 0;
}

std::uint32_t quorvane_decompress_end(std::uint32_t handle) {
    note("end " + std::to_string(handle));
    return 0;
}

}
