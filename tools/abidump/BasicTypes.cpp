// The widths of the host's basic types and enumerations.
#include "abidump/Tables.h"

namespace abidump {

std::vector<Type> basicTypes() {
    return {
        TYPE(csSDK_int8), TYPE(csSDK_int16), TYPE(csSDK_int32), TYPE(csSDK_int64), TYPE(csSDK_uint8),
        TYPE(csSDK_uint16), TYPE(csSDK_uint32), TYPE(csSDK_uint64), TYPE(csSDK_size_t), TYPE(prBool), TYPE(PrTime),
        TYPE(PrAudioSample), TYPE(prUTF16Char), TYPE(prSuiteError), TYPE(PrMemoryPtr), TYPE(PrMemoryHandle),
        TYPE(imFileRef), TYPE(PPixHand), TYPE(SPErr), TYPE(SPBoolean), TYPE(PrPixelFormat),
        TYPE(PrAudioChannelLabel), TYPE(PrAudioSampleType), TYPE(PrFileOpenAccess), TYPE(PrPPixBufferAccess),
    };
}

}  // namespace abidump
