// The two pixel format tables and their lookups, tested without the plug-in.
#include "HostFixture.h"

#include "codec/PixelFormatTables.h"

#include <set>

namespace {

template <class Call>
std::string runtimeErrorOf(Call call) {
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no error";
}

// The tables before the module's init.
const std::size_t subTypesAtStart = SubTypeInfos().size();
const std::size_t formatsAtStart = FormatInfos().size();

class PixelFormatTables : public testing::Test {
protected:
    PixelFormatTables() { BuildPixelFormatTables(m_host.basicSuite()); }

    hostkit::Host m_host;
};

struct SubTypeRow {
    const char* subType;
    const char16_t* name;
    csSDK_uint32 quoTypeComp;
    csSDK_uint32 x;
    csSDK_uint32 y;
    csSDK_uint32 colorModel;
    std::vector<const char*> preferred;
};

const SubTypeRow kSubTypeRows[] = {
    {"AR8Q", u"Quorvane 8-bit RGBA", 102, 1, 1, 1, {}},
    {"GR8Q", u"Quorvane 8-bit RGB", 101, 1, 1, 0, {}},
    {"AY8Q", u"Quorvane 8-bit YUVA 4:4:4:4", 106, 1, 1, 3, {"vuya", "VUYA"}},
    {"4Y8Q", u"Quorvane 8-bit YUV 4:4:4", 103, 1, 1, 2, {"vuyx", "vux7"}},
    {"2Y8Q", u"Quorvane 8-bit YUV 4:2:2", 104, 2, 1, 2, {"yuy2", "yuy3", "uyvy", "uyv7"}},
    {"0Y8Q", u"Quorvane 8-bit YUV 4:2:0", 105, 2, 2, 2, {"yuy2", "yuy3", "uyvy", "uyv7"}},
    {"0G8Q", u"Quorvane 8-bit YUV 4:0:0 greyscale", 107, 1, 1, 2, {"yuy2", "yuy3", "uyvy", "uyv7"}},
    {"AR0Q", u"Quorvane 10-bit RGBA", 110, 1, 1, 1, {}},
    {"GR0Q", u"Quorvane 10-bit RGB", 109, 1, 1, 0, {}},
    {"4Y0Q", u"Quorvane 10-bit YUV 4:4:4", 118, 1, 1, 2, {}},
    {"2Y0Q", u"Quorvane 10-bit YUV 4:2:2", 108, 2, 1, 2, {}},
    {"0G0Q", u"Quorvane 10-bit YUV 4:0:0 greyscale", 115, 1, 1, 2, {}},
    {"AR2Q", u"Quorvane 12-bit RGBA", 112, 1, 1, 1, {}},
    {"GR2Q", u"Quorvane 12-bit RGB", 111, 1, 1, 0, {}},
    {"AR4Q", u"Quorvane 14-bit RGBA", 114, 1, 1, 1, {}},
    {"GR4Q", u"Quorvane 14-bit RGB", 113, 1, 1, 0, {}},
};

struct FormatRow {
    const char* pixelFormat;
    const char* name;
    csSDK_uint32 quoType;
    csSDK_uint32 colorSpace;
    csSDK_uint32 flags;
};

const FormatRow kFormatRows[] = {
    {"yuy2", "YUYV 4:2:2 [8] Rec.601", 4, 1, 4},     {"yuy3", "YUYV 4:2:2 [8] Rec.709", 4, 2, 4},
    {"uyvy", "UYVY 4:2:2 [8] Rec.601", 5, 1, 4},     {"uyv7", "UYVY 4:2:2 [8] Rec.709", 5, 2, 4},
    {"vuya", "VUYA 4:4:4:4 [8] Rec.601", 50, 1, 4},  {"VUYA", "VUYA 4:4:4:4 [8] Rec.709", 50, 2, 4},
    {"vuyx", "VUYX 4:4:4 [8] Rec.601", 49, 1, 4},    {"vux7", "VUYX 4:4:4 [8] Rec.709", 49, 2, 4},
    {"bgra", "BGRA [8]", 2, 2, 0},                   {"argb", "ARGB [8]", 19, 2, 0},
    {"bgrx", "BGRX [8]", 1, 2, 0},                   {"xrgb", "XRGB [8]", 16, 2, 0},
    {"v210", "v210 4:2:2 [10] Rec.601", 11, 1, 4},   {"v211", "v210 4:2:2 [10] Rec.709", 11, 2, 4},
    {"RGB1", "RGB [10]", 15, 2, 0},                  {"Bgra", "BGRA [16]", 31, 2, 1},
    {"Bgrx", "BGRX [16]", 32, 2, 1},
};

TEST_F(PixelFormatTables, AreEmptyBeforeTheyAreBuilt) {
    EXPECT_EQ(subTypesAtStart, 0u);
    EXPECT_EQ(formatsAtStart, 0u);
}

TEST_F(PixelFormatTables, HoldTheSixteenSubtypesInOrder) {
    ASSERT_EQ(SubTypeInfos().size(), 16u);
    for (std::size_t i = 0; i < 16; ++i) {
        const SubTypeInfo& info = SubTypeInfos()[i];
        const SubTypeRow& row = kSubTypeRows[i];
        SCOPED_TRACE(row.subType);
        EXPECT_EQ(info.subType, codeOf(row.subType));
        EXPECT_EQ(std::u16string(info.subTypeName), row.name);
        EXPECT_EQ(info.quoTypeComp, row.quoTypeComp);
        EXPECT_EQ(info.xSubsampling, row.x);
        EXPECT_EQ(info.ySubsampling, row.y);
        EXPECT_EQ(static_cast<csSDK_uint32>(info.colorModel), row.colorModel);
    }
}

TEST_F(PixelFormatTables, HoldEachSubtypesPreferredFormatsInOrder) {
    ASSERT_EQ(SubTypeInfos().size(), 16u);
    for (std::size_t i = 0; i < 16; ++i) {
        std::set<csSDK_uint32> preferred;
        for (const char* characters : kSubTypeRows[i].preferred) {
            preferred.insert(codeOf(characters));
        }
        const auto formats = SubTypeInfos()[i].preferredFormats;
        EXPECT_EQ(std::vector<csSDK_uint32>(formats.begin(), formats.end()),
                  std::vector<csSDK_uint32>(preferred.begin(), preferred.end()))
            << kSubTypeRows[i].subType;
    }
}

TEST_F(PixelFormatTables, HoldTheDecodeFormatsInOrder) {
    ASSERT_EQ(FormatInfos().size(), std::size(kFormatRows));
    for (std::size_t i = 0; i < std::size(kFormatRows); ++i) {
        const FormatInfo& info = FormatInfos()[i];
        const FormatRow& row = kFormatRows[i];
        SCOPED_TRACE(row.pixelFormat);
        EXPECT_EQ(info.pixelFormat, codeOf(row.pixelFormat));
        EXPECT_STREQ(info.name, row.name);
        EXPECT_EQ(info.quoType, row.quoType);
        EXPECT_EQ(info.colorSpace, row.colorSpace);
        EXPECT_EQ(info.flags, row.flags);
    }
}

TEST_F(PixelFormatTables, HoldEachHostFormatOnce) {
    std::set<csSDK_uint32> formats;
    for (const FormatInfo& info : FormatInfos()) {
        formats.insert(info.pixelFormat);
    }
    EXPECT_EQ(formats.size(), FormatInfos().size());
}

TEST_F(PixelFormatTables, EveryFormatIsFound) {
    for (const FormatRow& row : kFormatRows) {
        EXPECT_STREQ(GetFormatInfo_by_pixelFormat(codeOf(row.pixelFormat)).name, row.name);
    }
}

TEST_F(PixelFormatTables, EverySubtypeIsFound) {
    for (const SubTypeRow& row : kSubTypeRows) {
        EXPECT_EQ(GetSubTypeInfo_by_quoTypeComp(row.quoTypeComp).subType, codeOf(row.subType));
    }
}

TEST_F(PixelFormatTables, AnUnlistedFormatIsNamedInTheError) {
    EXPECT_EQ(runtimeErrorOf([] { GetFormatInfo_by_pixelFormat(0x66646162); }),
              "GetFormatInfo_by_pixelFormat(): pixel format not found: PrPixelFormat_Invalid [badf]");
}

TEST_F(PixelFormatTables, AnUnprintableFormatIsShownByItsNumbers) {
    EXPECT_EQ(runtimeErrorOf([] { GetFormatInfo_by_pixelFormat(1); }),
              "GetFormatInfo_by_pixelFormat(): pixel format not found: ???? [[1][0][0][0]]");
}

TEST_F(PixelFormatTables, AnUnlistedTypeIsNamedInTheError) {
    EXPECT_EQ(runtimeErrorOf([] { GetSubTypeInfo_by_quoTypeComp(117); }),
              "GetSubTypeInfo_by_quoTypeComp(): type not found: unknown type (117)");
}

TEST_F(PixelFormatTables, ATypeOnlyTheCodecKnowsIsNamedInTheError) {
    EXPECT_EQ(runtimeErrorOf([] { GetSubTypeInfo_by_quoTypeComp(4); }),
              "GetSubTypeInfo_by_quoTypeComp(): type not found: YUYV (4)");
}

TEST_F(PixelFormatTables, BuildingThemReleasesTheSuite) {
    EXPECT_EQ(m_host.calls().count(hostkit::HostCall::AcquireSuite), 1);
    EXPECT_EQ(m_host.problems(), Lines{});
}

}  // namespace
