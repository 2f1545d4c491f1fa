#include "standin/Names.h"

#include "codec/QuorvaneApi.h"
#include "standin/CompressedTypes.h"
#include "standin/DecodeTypes.h"
#include "standin/Result.h"

#include <iterator>

namespace standin {
namespace {

// Numbers 1 to 50 are pixel types; callers list them all, although this library supports only a few.
constexpr const char* kPlainTypeNames[] = {
    "type 1",  "type 2",  "type 3",  "type 4",  "type 5",  "type 6",  "type 7",  "type 8",  "type 9",  "type 10",
    "type 11", "type 12", "type 13", "type 14", "type 15", "type 16", "type 17", "type 18", "type 19", "type 20",
    "type 21", "type 22", "type 23", "type 24", "type 25", "type 26", "type 27", "type 28", "type 29", "type 30",
    "type 31", "type 32", "type 33", "type 34", "type 35", "type 36", "type 37", "type 38", "type 39", "type 40",
    "type 41", "type 42", "type 43", "type 44", "type 45", "type 46", "type 47", "type 48", "type 49", "type 50",
};

const char* typeName(std::uint32_t number) {
    if (const DecodeType* type = findDecodeType(number))
        return type->name;
    if (const CompressedType* type = findCompressedType(number))
        return type->name;
    if (number >= 1 && number <= std::size(kPlainTypeNames))
        return kPlainTypeNames[number - 1];
    return unknownName(kQuorvaneTypeName);
}

const char* colorSpaceName(std::uint32_t number) {
    switch (number) {
    case kQuorvaneRec601: return "Rec.601";
    case kQuorvaneRec709: return "Rec.709";
    default: return unknownName(kQuorvaneColorSpaceName);
    }
}

const char* parameterName(std::uint32_t number) {
    switch (number) {
    case kQuorvaneCanFlip: return "can flip";
    case kQuorvaneSupportsRange32768: return "supports 0-32768";
    default: return unknownName(kQuorvaneParameterName);
    }
}

}  // namespace

const char* nameOf(std::uint32_t category, std::uint32_t value) {
    switch (category) {
    case kQuorvaneTypeName: return typeName(value);
    case kQuorvaneErrorText: return resultText(value);
    case kQuorvaneColorSpaceName: return colorSpaceName(value);
    case kQuorvaneParameterName: return parameterName(value);
    default: return unknownName(category);
    }
}

const char* unknownName(std::uint32_t category) {
    switch (category) {
    case kQuorvaneTypeName: return "unknown type";
    case kQuorvaneErrorText: return "unknown error";
    case kQuorvaneColorSpaceName: return "unknown colour space";
    case kQuorvaneParameterName: return "unknown parameter";
    default: return "unknown string category";
    }
}

}  // namespace standin
