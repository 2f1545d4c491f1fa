#include "codec/CodecInstance.h"

#include "codec/QuorvaneError.h"

#include <initializer_list>

namespace {

std::string describeFormat(const QuorvaneFormat& format) {
    std::string text = "{";
    for (const std::uint32_t field : {format.width, format.height, format.word2, format.word3, format.type,
                                      format.flags, format.colorSpace, format.range, format.word8}) {
        text += (text.size() > 1 ? "," : "") + std::to_string(field);
    }
    return text + "}";
}

std::string describeBytes(const void* bytes, std::size_t count) {
    return bytes == nullptr ? "null" : "{" + std::to_string(count) + " bytes}";
}

std::string describePlanes(const std::array<QuorvanePlane, 4>& planes) {
    std::string text;
    for (const QuorvanePlane& plane : planes) {
        text += (text.empty() ? "{" : ",{") + std::to_string(plane.address) + "," + std::to_string(plane.rowBytes) +
                "," + std::to_string(plane.size) + "}";
    }
    return text;
}

std::string describeCall(const char* name, std::initializer_list<std::string> arguments) {
    std::string text = std::string(name) + "(";
    const char* separator = "";
    for (const std::string& argument : arguments) {
        text += separator + argument;
        separator = ", ";
    }
    return text + ")";
}

// The description is built only on failure, so a good frame does not pay for it.
template <class Describe>
void check(std::uint32_t code, Describe describe) {
    if (code != 0) {
        throw QuorvaneError(describe(), code);
    }
}

}  // namespace

std::string codecTypeName(std::uint32_t type) {
    return quorvane_get_string(kQuorvaneTypeName, type);
}

std::string codecColorSpaceName(std::uint32_t colorSpace) {
    return quorvane_get_string(kQuorvaneColorSpaceName, colorSpace);
}

std::string codecParameterName(std::uint32_t parameter) {
    return quorvane_get_string(kQuorvaneParameterName, parameter);
}

QuorvaneFormat preparedFormat() {
    QuorvaneFormat format;
    format.word2 = 254;
    format.word3 = 1;
    return format;
}

CodecInstance::CodecInstance() {
    quorvane_library_init();
    quorvane_open(&m_handle);
}

CodecInstance::~CodecInstance() {
    if (m_handle != 0) {
        quorvane_close(m_handle);
    }
    // Balances the init above, even if no instance could be opened.
    quorvane_library_close();
}

QuorvaneFormat CodecInstance::decompressQuery(const std::vector<std::uint8_t>& compressedFormat) {
    QuorvaneFormat output = preparedFormat();
    check(query(compressedFormat, nullptr, output), [&] {
        return describeCall("decompressQuery",
                            {describeBytes(compressedFormat.data(), compressedFormat.size()), "null"});
    });
    return output;
}

bool CodecInstance::canDecompress(const std::vector<std::uint8_t>& compressedFormat, const QuorvaneFormat& request) {
    QuorvaneFormat output = preparedFormat();
    return query(compressedFormat, &request, output) == 0;
}

std::uint32_t CodecInstance::query(const std::vector<std::uint8_t>& compressedFormat, const QuorvaneFormat* request,
                                   QuorvaneFormat& output) {
    return quorvane_decompress_query(m_handle, compressedFormat.data(),
                                     static_cast<std::uint32_t>(compressedFormat.size()), request, &output);
}

QuorvaneFormat CodecInstance::decompressBegin(const std::vector<std::uint8_t>& compressedFormat,
                                              const QuorvaneFormat& request) {
    QuorvaneFormat output = preparedFormat();
    check(quorvane_decompress_begin(m_handle, compressedFormat.data(),
                                    static_cast<std::uint32_t>(compressedFormat.size()), &request, &output),
          [&] {
              return describeCall("decompressBegin", {describeBytes(compressedFormat.data(), compressedFormat.size()),
                                                      describeFormat(request)});
          });
    return output;
}

void CodecInstance::decompress(const std::uint8_t* frame, std::uint32_t size,
                               const std::array<QuorvanePlane, 4>& planes) {
    check(quorvane_decompress(m_handle, frame, size, planes.data()), [&] {
        return describeCall("decompress", {describeBytes(frame, size), describePlanes(planes)});
    });
}

void CodecInstance::decompressEnd() {
    check(quorvane_decompress_end(m_handle), [] { return describeCall("decompressEnd", {}); });
}

void CodecInstance::getParam(std::uint32_t parameter, std::uint32_t& value) {
    check(quorvane_get_param(m_handle, parameter, &value, sizeof value), [&] {
        return describeCall("getParam", {std::to_string(m_handle), codecParameterName(parameter)});
    });
}

QuorvaneFormat CodecInstance::compressQuery(const QuorvaneFormat& input, std::uint64_t& further) {
    QuorvaneFormat output = preparedFormat();
    check(quorvane_compress_query(m_handle, &input, &output, &further, nullptr), [&] {
        return describeCall("compressQuery",
                            {describeFormat(input), describeFormat(output), std::to_string(further)});
    });
    return output;
}
