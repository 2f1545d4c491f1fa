// Collects the times of one row, with a progress bar on the terminal.
#pragma once

#include "importhost/bench/Measurement.h"
#include "importhost/console/Progress.h"

#include "hostkit/system/Interrupt.h"

#include <utility>

namespace importhost::bench {

// Throws hostkit::Interrupted if the user interrupted the program, so that clips are closed and the log's switch is
// restored.
inline void expectNoInterrupt() {
    if (hostkit::wasInterrupted()) {
        throw hostkit::Interrupted();
    }
}

class RowBuilder {
public:
    // `requests` requests will follow. Starts counting reads and the row's own clock.
    RowBuilder(const std::string& name, std::size_t requests, ReadCounter& counter, std::vector<std::string>& failures)
        : m_counter(counter), m_failures(failures), m_progress(name, static_cast<std::int64_t>(requests)) {
        m_row.name = name;
        m_counter.start();
        m_clock = Stopwatch();
    }

    void delivered(double milliseconds) { m_waits.push_back(milliseconds); }

    // Only the row's first failure is reported; the others are counted.
    void failed(const std::string& what, const std::string& answer) {
        if (m_row.failed++ == 0) {
            m_failures.push_back(what + " failed (" + m_row.name + "): " + answer + ".");
        }
    }

    // Call after each request. Throws hostkit::Interrupted.
    void step() {
        m_progress.step();
        expectNoInterrupt();
    }

    Row finish() {
        m_progress.clear();
        m_row.seconds = m_clock.milliseconds() / 1000.0;
        m_row.reads = m_counter.reads();
        m_row.waits = summaryOf(std::move(m_waits));
        return std::move(m_row);
    }

private:
    ReadCounter& m_counter;
    std::vector<std::string>& m_failures;
    Progress m_progress;
    Row m_row;
    std::vector<double> m_waits;
    Stopwatch m_clock;
};

}  // namespace importhost::bench
