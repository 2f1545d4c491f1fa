// The codec binding alone: the calls that no selector makes, and the errors that no log shows completely.
#include "codec/CodecInstance.h"
#include "codec/PixelFormatDump.h"
#include "codec/PixelFormatTables.h"
#include "codec/QuorvaneError.h"
#include "hostkit/host/Host.h"
#include "standin/Control.h"
#include "standin/Encoder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

class CodecBinding : public ::testing::Test {
protected:
    void SetUp() override { standin_reset(); }

    void TearDown() override {
        StandinCounters counters;
        standin_counters(&counters);
        EXPECT_EQ(counters.openInstances, 0u);
        EXPECT_EQ(counters.outstandingInits, 0u);
        EXPECT_EQ(counters.unpreparedOutputs, 0u);
    }

    // The code and the message of the error that `action` throws.
    static std::string errorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const QuorvaneError& error) {
            return std::to_string(error.code()) + " " + error.what();
        }
        return "no error";
    }

    const std::vector<std::uint8_t> m_stream =
        standin::encodeExtraData({.type = 104, .width = 8, .height = 4, .colorSpace = 2, .range = 1});
};

// The tables are empty until they are built, which needs a host.
class CodecBindingWithTables : public CodecBinding {
protected:
    void SetUp() override {
        CodecBinding::SetUp();
        BuildPixelFormatTables(m_host.basicSuite());
    }

    hostkit::Host m_host;
};

}  // namespace

TEST_F(CodecBinding, DescribesAStreamWithoutARequest) {
    CodecInstance codec;
    const QuorvaneFormat format = codec.decompressQuery(m_stream);
    EXPECT_EQ(format.type, 104u);
    EXPECT_EQ(format.width, 8u);
    EXPECT_EQ(format.height, 4u);
    EXPECT_EQ(format.colorSpace, 2u);
    EXPECT_EQ(format.range, 1u);
}

TEST_F(CodecBinding, PreparesARequestWithTheTwoFixedWords) {
    const QuorvaneFormat format = preparedFormat();
    EXPECT_EQ(format.word2, 254u);
    EXPECT_EQ(format.word3, 1u);
    EXPECT_EQ(format.width | format.height | format.type | format.flags | format.colorSpace | format.range |
                  format.word8, 0u);
}

TEST_F(CodecBinding, ReportsWhichRequestsItCanDecodeInto) {
    CodecInstance codec;
    QuorvaneFormat request = preparedFormat();
    request.type = 3;
    request.range = 2;
    EXPECT_FALSE(codec.canDecompress(m_stream, request));
    StandinCounters counters;
    standin_counters(&counters);
    EXPECT_EQ(counters.calls[kStandinGetString], 0u) << "the error text is not needed";
    request.type = 2;
    request.colorSpace = 2;
    request.flags = 1;
    EXPECT_TRUE(codec.canDecompress(m_stream, request));
}

TEST_F(CodecBinding, NamesTheRequestOfAFailingBegin) {
    CodecInstance codec;
    QuorvaneFormat request = preparedFormat();
    request.type = 3;
    request.range = 2;
    EXPECT_EQ(errorOf([&] { codec.decompressBegin(m_stream, request); }),
              "2147500548 Quorvane error (-2147466748): the requested type cannot be decoded into: "
              "decompressBegin({28 bytes}, {0,0,254,1,3,0,0,2,0})");
}

TEST_F(CodecBinding, NamesNoArgumentsOfAFailingEnd) {
    CodecInstance codec;
    EXPECT_EQ(errorOf([&] { codec.decompressEnd(); }),
              "2147500039 Quorvane error (-2147467257): no decode session is running that could be ended: "
              "decompressEnd()");
}

TEST_F(CodecBinding, NamesFrameAndPlanesOfAFailingDecompress) {
    CodecInstance codec;
    const std::uint8_t frame[3] = {};
    std::array<QuorvanePlane, 4> planes;
    planes[0] = {4096, 128, 512};
    EXPECT_EQ(errorOf([&] { codec.decompress(frame, sizeof frame, planes); }),
              "2147500038 Quorvane error (-2147467258): no decode session is running to decode a frame in: "
              "decompress({3 bytes}, {4096,128,512},{0,0,0},{0,0,0},{0,0,0})");
}

TEST_F(CodecBinding, NamesANullFrame) {
    CodecInstance codec;
    EXPECT_NE(errorOf([&] { codec.decompress(nullptr, 0, {}); }).find("decompress(null, "), std::string::npos);
}

TEST_F(CodecBinding, NamesTheParameterThatCannotBeRead) {
    CodecInstance codec;
    standin_fail(kStandinGetParam, 1, 1, 21);
    std::uint32_t value = 4;
    const std::string error = errorOf([&] { codec.getParam(7, value); });
    EXPECT_TRUE(error.starts_with("21 Quorvane error (21): unknown error: getParam(")) << error;
    EXPECT_TRUE(error.ends_with(", can flip)")) << error;
}

TEST_F(CodecBinding, PassesTheTypeInTheParametersValue) {
    CodecInstance codec;
    std::uint32_t value = 31;
    codec.getParam(9, value);
    EXPECT_EQ(value, 1u);
    value = 4;
    codec.getParam(9, value);
    EXPECT_EQ(value, 0u);
}

TEST_F(CodecBinding, NamesTheFormatsOfAFailingCompressQuery) {
    QuorvaneFormat input = preparedFormat();
    input.type = 3;
    EXPECT_EQ(errorOf([&] { ProbeEncoder(input); }),
              "2147500042 Quorvane error (-2147467254): the encoder does not take this format: "
              "compressQuery({0,0,254,1,3,0,0,0,0}, {0,0,254,1,0,0,0,0,0}, 0)");
}

TEST_F(CodecBinding, ReportsTheEncodersOutputFormat) {
    QuorvaneFormat input = preparedFormat();
    input.type = 2;
    EXPECT_EQ(ProbeEncoder(input).type, 102u);
}

TEST_F(CodecBinding, WritesTheEncodersFurtherValueWhereItIsReadBack) {
    CodecInstance codec;
    QuorvaneFormat input = preparedFormat();
    input.type = 2;
    std::uint64_t further = 7;
    codec.compressQuery(input, further);
    EXPECT_EQ(further, 0u);
}

TEST_F(CodecBinding, ErrorKeepsMessageAndCodeWhenCopied) {
    const QuorvaneError error("call(1, 2)", 0x80004005);
    const QuorvaneError copy(error);
    EXPECT_EQ(copy.code(), 0x80004005u);
    EXPECT_STREQ(copy.what(),
                 "Quorvane error (-2147467259): a decode session is already running on this handle: call(1, 2)");
}

TEST_F(CodecBinding, ErrorIsARuntimeError) {
    EXPECT_THROW(throw QuorvaneError("call()", 1), std::runtime_error);
}

TEST_F(CodecBinding, TakesNamesFromTheLibrary) {
    EXPECT_EQ(codecTypeName(104), "YUV 4:2:2 8");
    EXPECT_EQ(codecColorSpaceName(2), "Rec.709");
    EXPECT_EQ(codecParameterName(9), "supports 0-32768");
}

TEST_F(CodecBindingWithTables, FindNoUnlistedType) {
    try {
        GetSubTypeInfo_by_quoTypeComp(117);
        FAIL() << "117 was found";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "GetSubTypeInfo_by_quoTypeComp(): type not found: unknown type (117)");
    }
}

TEST_F(CodecBindingWithTables, FindNoInvalidPixelFormat) {
    try {
        GetFormatInfo_by_pixelFormat(PrPixelFormat_Invalid);
        FAIL() << "badf was found";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(),
                     "GetFormatInfo_by_pixelFormat(): pixel format not found: PrPixelFormat_Invalid [badf]");
    }
}

TEST_F(CodecBindingWithTables, HoldEachPixelFormatOnce) {
    for (const FormatInfo& row : FormatInfos()) {
        EXPECT_EQ(&GetFormatInfo_by_pixelFormat(row.pixelFormat), &row);
    }
}

TEST_F(CodecBindingWithTables, HoldEachTypeOnce) {
    for (const SubTypeInfo& row : SubTypeInfos()) {
        EXPECT_EQ(&GetSubTypeInfo_by_quoTypeComp(row.quoTypeComp), &row);
    }
}
