#include "importhost/validate/checks/stage/Codec.h"

namespace importhost::validate {

namespace {

// Any failing code will do: importers do not tell them apart.
constexpr std::uint32_t kFailure = 0x80001234;

void* control(const char* name) { return hostkit::PluginLibrary::symbolOfLoadedLibrary(CODEC_LIBRARY_NAME, name); }

template <class Function>
void find(const char* name, Function& function) {
    function = reinterpret_cast<Function>(control(name));
}

}  // namespace

bool Codec::isControllable() { return control("standin_answer") != nullptr; }

std::optional<StandinCounters> Codec::counted() {
    decltype(&standin_counters) ask = nullptr;
    find("standin_counters", ask);
    if (!ask) {
        return std::nullopt;
    }
    StandinCounters counters;
    ask(&counters);
    return counters;
}

Codec::Codec(CheckRun& run) {
    if (!isControllable()) {
        run.skip("the codec library at hand cannot be made to fail");
    }
    find("standin_counters", m_counters);
    find("standin_reset", m_reset);
    find("standin_fail", m_fail);
    find("standin_visit", m_visit);
    find("standin_answer", m_answer);
    m_reset();
}

StandinCounters Codec::counters() const {
    StandinCounters counters;
    m_counters(&counters);
    return counters;
}

void Codec::fail(std::uint32_t function, std::uint32_t nth, std::uint32_t times) {
    m_fail(function, nth, times, kFailure);
}

std::string Codec::heldText() const {
    const StandinCounters now = counters();
    return std::to_string(now.openInstances) + " instances, " + std::to_string(now.runningSessions) + " sessions, " +
           std::to_string(now.outstandingInits) + " initialisations";
}

const char* codecFunctionName(std::uint32_t function) {
    constexpr const char* kNames[] = {
        "quorvane_library_init",     "quorvane_library_close",     "quorvane_open",
        "quorvane_close",            "quorvane_get_string",        "quorvane_get_param",
        "quorvane_compress_query",   "quorvane_decompress_query",  "quorvane_decompress_begin",
        "quorvane_decompress",       "quorvane_decompress_end"};
    static_assert(std::size(kNames) == kStandinFunctionCount);
    return kNames[function];
}

}  // namespace importhost::validate
