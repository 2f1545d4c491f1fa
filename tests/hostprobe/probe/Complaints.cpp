#include "probe/Complaints.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <vector>

namespace hostprobe {

namespace {

class Report {
public:
    ~Report() {
        if (m_calls != 0 && !m_isWritten) {
            add(textOf(Sentence::NoShutdown));
            write();
        }
    }

    void add(const std::string& sentence) {
        const std::lock_guard lock(m_mutex);
        if (std::find(m_sentences.begin(), m_sentences.end(), sentence) == m_sentences.end()) {
            m_sentences.push_back(sentence);
        }
        rewrite();
    }

    void count() {
        const std::lock_guard lock(m_mutex);
        ++m_calls;
        rewrite();
    }

    void write() {
        const std::lock_guard lock(m_mutex);
        m_isWritten = true;
        rewrite();
    }

private:
    void rewrite() const {
        const char* path = std::getenv("HOSTPROBE_REPORT");
        std::FILE* file = m_isWritten && path ? std::fopen(path, "wb") : nullptr;
        if (!file) {
            return;     // the missing report shows it
        }
        for (const std::string& sentence : m_sentences) {
            std::fprintf(file, "%s\n", sentence.c_str());
        }
        std::fprintf(file, "%d calls checked\n", m_calls);
        std::fclose(file);
    }

    std::mutex m_mutex;
    std::vector<std::string> m_sentences;
    int m_calls = 0;
    bool m_isWritten = false;
};

Report report;

// Replaces "{0}" and so on.
std::string fill(const char* text, std::initializer_list<std::string> details) {
    std::string filled = text;
    int number = 0;
    for (const std::string& detail : details) {
        const std::string mark = "{" + std::to_string(number++) + "}";
        if (const std::size_t at = filled.find(mark); at != std::string::npos) {
            filled.replace(at, mark.size(), detail);
        }
    }
    return filled;
}

}  // namespace

void complain(Sentence sentence, std::initializer_list<std::string> details) {
    report.add(fill(textOf(sentence), details));
}

bool expect(bool isTrue, Sentence sentence, std::initializer_list<std::string> details) {
    if (!isTrue) {
        complain(sentence, details);
    }
    return isTrue;
}

bool expectGood(const char* function, csSDK_int32 result) {
    return expect(result >= 0, Sentence::CallFailed, {function, std::to_string(result)});
}

bool expectZero(const char* function, csSDK_int32 result) {
    return expect(result == 0, Sentence::CallFailed, {function, std::to_string(result)});
}

void countCall() { report.count(); }

void writeReport() { report.write(); }

}  // namespace hostprobe
