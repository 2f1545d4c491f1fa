#include "wrong/StuckFault.h"

namespace wrong {

namespace {

constexpr csSDK_int32 kUsualWidth = 48;
constexpr csSDK_int32 kUsualHeight = 32;

}  // namespace

csSDK_int32 deliverNothing(imStdParms* stdParms, const imSourceVideoRec& record) {
    SPBasicSuite* basic = stdParms->piSuites->utilFuncs->getSPBasicSuite();
    const void* suite = nullptr;
    if (basic->AcquireSuite(kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion, &suite) != 0) {
        return imOtherErr;
    }
    const imFrameFormat wanted = record.inFrameFormats[0];
    const prRect bounds = {0, 0, wanted.inFrameWidth ? wanted.inFrameWidth : kUsualWidth,
                           wanted.inFrameHeight ? wanted.inFrameHeight : kUsualHeight};
    static_cast<const PrSDKPPixCreatorSuite*>(suite)->CreatePPix(
        record.outFrame, PrPPixBufferAccess_WriteOnly, static_cast<PrPixelFormat>(wanted.inPixelFormat), &bounds);
    basic->ReleaseSuite(kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion);
    return imNoErr;
}

}  // namespace wrong
