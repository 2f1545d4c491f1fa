// What several faults do: they remember a bad answer for ever, or put another answer in its place.
#pragma once

#include "wrong/Fault.h"

namespace wrong {

// The right answer; but once it was `answer`, it always is.
template <csSDK_int32 selector, csSDK_int32 answer>
csSDK_int32 sticksTo(csSDK_int32 asked, imStdParms* stdParms, void* param1, void* param2) {
    static bool isStuck = false;
    if (asked != selector) {
        return right(asked, stdParms, param1, param2);
    }
    const csSDK_int32 result = isStuck ? answer : right(asked, stdParms, param1, param2);
    isStuck = result == answer;
    return result;
}

// The right answer, but `other` in place of `answer`.
template <csSDK_int32 selector, csSDK_int32 answer, csSDK_int32 other>
csSDK_int32 saysOther(csSDK_int32 asked, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(asked, stdParms, param1, param2);
    return asked == selector && result == answer ? other : result;
}

// A new frame without any picture, delivered as if it were the one that was asked for.
csSDK_int32 deliverNothing(imStdParms* stdParms, const imSourceVideoRec& record);

// Delivers such a frame where the right answer to a request for a frame is `answer`.
template <csSDK_int32 answer>
csSDK_int32 deliversInsteadOf(csSDK_int32 asked, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(asked, stdParms, param1, param2);
    return asked == imGetSourceVideo && result == answer
               ? deliverNothing(stdParms, *static_cast<const imSourceVideoRec*>(param2))
               : result;
}

}  // namespace wrong
