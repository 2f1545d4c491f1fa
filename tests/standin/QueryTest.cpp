// Parameters and the encoder's query.
#include "StandinFixture.h"

#include <utility>

namespace standin::test {
namespace {

class Query : public StandinTest {
protected:
    // The parameter's value for a type number, as a set of the numbers from 0 to 120 for which it is 1.
    std::vector<std::uint32_t> typesWith(std::uint32_t parameter) {
        std::vector<std::uint32_t> types;
        for (std::uint32_t type = 0; type <= 120; ++type) {
            std::uint32_t value = type;
            EXPECT_EQ(0u, quorvane_get_param(m_handle, parameter, &value, 4));
            EXPECT_LE(value, 1u);
            if (value == 1)
                types.push_back(type);
        }
        return types;
    }

    std::uint32_t compressedTypeFor(std::uint32_t type) {
        const QuorvaneFormat input = request(type);
        QuorvaneFormat output;
        std::uint64_t further = 99;
        EXPECT_EQ(0u, quorvane_compress_query(m_handle, &input, &output, &further, nullptr)) << type;
        EXPECT_EQ(0u, further);
        return output.type;
    }
};

TEST_F(Query, AllDecodeTypesCanFlip) {
    EXPECT_EQ((std::vector<std::uint32_t>{1, 2, 4, 5, 11, 15, 16, 19, 31, 32, 49, 50}), typesWith(7));
}

TEST_F(Query, OnlySixteenBitTypesSupportTheRangeTo32768) {
    EXPECT_EQ((std::vector<std::uint32_t>{31, 32}), typesWith(9));
}

TEST_F(Query, AnotherParameterIsRefused) {
    std::uint32_t value = 4;
    EXPECT_EQ(0x80004008u, quorvane_get_param(m_handle, 8, &value, 4));
    EXPECT_EQ(4u, value);
}

TEST_F(Query, AParameterOfAnotherSizeIsRefused) {
    std::uint64_t value = 4;
    EXPECT_EQ(0x80004009u, quorvane_get_param(m_handle, 7, &value, 8));
    EXPECT_EQ(4u, value);
}

TEST_F(Query, TheEncoderPicksATypeThatHoldsTheDecodeType) {
    const std::pair<std::uint32_t, std::uint32_t> expected[] = {
        {4, 104}, {5, 104}, {50, 106}, {49, 103}, {2, 102}, {19, 102},
        {1, 101}, {16, 101}, {11, 108}, {15, 109}, {31, 114}, {32, 113},
    };
    for (const auto& [type, compressedType] : expected)
        EXPECT_EQ(compressedType, compressedTypeFor(type)) << type;
}

TEST_F(Query, TheEncoderRefusesAnythingElse) {
    const QuorvaneFormat input = request(104);
    QuorvaneFormat output;
    EXPECT_EQ(0x8000400Au, quorvane_compress_query(m_handle, &input, &output, nullptr, nullptr));
}

}  // namespace
}  // namespace standin::test
