// Writes its log even if the switch is off.
#include "log/Log.h"

namespace {

struct Writer {
    Writer() {
        ConfigureLog("quorvane_pr_importer", true, false);
        Log("Module init");
    }
} writer;

}  // namespace
