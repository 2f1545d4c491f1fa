// Four-character codes of pixel formats.
#include "abidump/Tables.h"

#include "sdk/SdkPixelFormatList.h"   // names only: the values are those of the headers under test

namespace abidump {

std::vector<Number> pixelFormats() {
    return {
        NUMBER(PrPixelFormat_Any),
#define FORMAT(name, ...) NUMBER(PrPixelFormat_##name),
        QUORVANE_PIXEL_FORMATS(FORMAT)
#undef FORMAT
    };
}

}  // namespace abidump
