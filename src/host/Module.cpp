// What happens when the module is loaded and unloaded.
#include "host/ModuleState.h"
#include "log/Log.h"

constinit ModuleState moduleState;

namespace {

constexpr char kLogName[] = "quorvane_pr_importer";

// Special builds can turn these on permanently.
constexpr bool kLogEnabledAtLoad = false;
constexpr bool kLogConsole = false;

struct ModuleLifetime {
    ModuleLifetime() {
        ConfigureLog(kLogName, kLogEnabledAtLoad, kLogConsole);
        Log("Module init");
    }
    ~ModuleLifetime() {
        StopWaitingForLog();
        Log("Module destroy");
        CloseLog();
    }
} moduleLifetime;

}  // namespace
