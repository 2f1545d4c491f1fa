// The entry of the wrong plug-in: the chosen fault, or the real plug-in.
#include "wrong/Export.h"
#include "wrong/Fault.h"

#include <cstdlib>

namespace wrong {

namespace {

const Fault* chosenFault() {
    const std::span<const Fault> groups[] = {
        libraryFaults(), startFaults(), openFaults(), infoFaults(), listFaults(), lifeFaults(),
        frameFaults(), audioFaults(), asyncFaults(), refusingHostFaults(), codecFaults(), diskFaults(),
        exceptionFaults(), stateFaults(), measureFaults(), frameworkFaults()};
    const char* name = std::getenv("WRONG_PLUGIN");
    for (const std::span<const Fault> group : groups) {
        for (const Fault& fault : group) {
            if (name && fault.name == name) {
                return &fault;
            }
        }
    }
    return nullptr;
}

}  // namespace

}  // namespace wrong

WRONG_EXPORT csSDK_int32 xImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);

csSDK_int32 xImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static const wrong::Fault* const fault = wrong::chosenFault();
    const wrong::Call call = {selector, stdParms, param1, param2};
    return fault ? fault->answer(call) : call.pass();
}
