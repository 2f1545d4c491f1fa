// Writes its log whatever the switch says.
#include "log/Log.h"

namespace {

struct Writer {
    Writer() {
        ConfigureLog("quorvane_pr_importer", true, false);
        Log("Module init");
    }
} writer;

}  // namespace
