// The two tables that map the codec's numbers to the host's pixel formats. Empty until BuildPixelFormatTables, which
// imInit calls before any file is opened; read-only afterwards.
#pragma once

#include "sdk/SdkPixelFormat.h"
#include "sdk/SdkSuites.h"

#include <cstdint>
#include <span>

enum class ColorModel : std::uint32_t { Rgb = 0, RgbAlpha = 1, Yuv = 2, YuvAlpha = 3 };

// A compressed type of the codec.
struct SubTypeInfo {
    std::uint32_t subType = 0;              // code for the host
    const char16_t* subTypeName = u"";      // name for the host
    std::uint32_t quoTypeComp = 0;          // the codec's number of the type
    std::uint32_t xSubsampling = 1;
    std::uint32_t ySubsampling = 1;
    ColorModel colorModel = ColorModel::Rgb;
    std::span<const PrPixelFormat> preferredFormats;   // may be empty

    bool hasAlpha() const { return colorModel == ColorModel::RgbAlpha || colorModel == ColorModel::YuvAlpha; }
};

enum FormatInfoFlag : std::uint32_t {
    kIsAdobe16u = 1,      // 16-bit samples from 0 to 32768
    kIsTopLeft = 2,       // rows stored top-down
    kLimitedRange = 4,    // video range
};

// A host pixel format that the codec can decode into.
struct FormatInfo {
    std::uint32_t pixelFormat = 0;
    const char* name = "";
    std::uint32_t quoType = 0;              // the codec's number of the type
    std::uint32_t colorSpace = 0;           // QuorvaneColorSpace
    std::uint32_t flags = 0;                // FormatInfoFlag bits

    bool isAdobe16u() const { return (flags & kIsAdobe16u) != 0; }
    bool isTopLeft() const { return (flags & kIsTopLeft) != 0; }
    bool isLimitedRange() const { return (flags & kLimitedRange) != 0; }
};

// Fills both tables. Throws std::runtime_error if the host has no Image Processing Suite.
void BuildPixelFormatTables(SPBasicSuite* basicSuite);

// The tables; decode formats are offered to the host in this order.
std::span<const SubTypeInfo> SubTypeInfos();
std::span<const FormatInfo> FormatInfos();

// Lookups; throw std::runtime_error if the table has no such row.
const FormatInfo& GetFormatInfo_by_pixelFormat(std::uint32_t pixelFormat);
const SubTypeInfo& GetSubTypeInfo_by_quoTypeComp(std::uint32_t quoTypeComp);
