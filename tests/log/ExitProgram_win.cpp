// Loads the plug-in, starts four threads that call it in endless loops, and exits while they run.
#include "hostkit/host/Host.h"
#include "hostkit/plugin/PluginLibrary.h"

#include <windows.h>

#include <chrono>
#include <thread>

int main() {
    constexpr csSDK_int32 kSelectorWithoutHandler = 65;
    hostkit::Host host;
    const hostkit::PluginLibrary plugin(hostkit::PluginLibrary::programFolder() /
                                        hostkit::PluginLibrary::usualFileName());
    const auto call = [&] { plugin.entry()(kSelectorWithoutHandler, host.stdParms(), nullptr, nullptr); };
    call();   // opens the log
    for (int i = 0; i < 4; ++i) {
        std::thread([&] {
            for (;;) {
                call();
            }
        }).detach();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    ExitProcess(0);
}
