#include "host/EntryPoint.h"

#include "host/Dispatch.h"
#include "host/ModuleState.h"
#include "host/Vocabulary.h"
#include "log/Log.h"
#include "text/Utf.h"

#include <cstring>
#include <exception>
#include <string>

namespace {

constexpr char kErrorTitle[] = "QuorvaneImporter: Internal error";

// The exception's own text. A plain std::exception only has the library's default text, which says nothing.
std::string messageOf(const std::exception& exception) {
    const char* text = exception.what();
    if (text == nullptr || *text == '\0' || std::strcmp(text, std::exception().what()) == 0) {
        return "Unknown exception";
    }
    return text;
}

// If the host refuses its Error Suite now, this throws into the host: there is nobody else to report to.
void reportToHost(const std::string& text) {
    if (moduleState.errorSuite == nullptr) {
        return;
    }
    std::u16string wideText = utf16FromUtf8(text);
    std::u16string wideTitle = utf16FromUtf8(kErrorTitle);
    moduleState.errorSuite->get()->SetEventStringUnicode(kEventTypeError, wideTitle.data(), wideText.data());
}

}  // namespace

csSDK_int32 xImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    std::string text;
    try {
        return DispatchSelector(selector, stdParms, param1, param2);
    } catch (const std::exception& exception) {
        text = std::string("FATAL: Unhandled exception during [") + SelectorName(selector) + "] (" +
               std::to_string(selector) + "): " + messageOf(exception);
    }
    Log("%s", text.c_str());
    reportToHost(text);   // not inside the handler, which an exception of a host of another compiler would never leave
    return kExceptionResult;
}
