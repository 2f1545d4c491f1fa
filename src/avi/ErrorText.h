// The messages that parsing collects, one line each.
#pragma once

#include "avi/ParserLimits.h"

#include <string>
#include <string_view>

class ErrorText {
public:
    // Appends one message, which ends in a line feed. Messages beyond the limit are dropped.
    void add(std::string_view line) {
        if (hasRoom()) {
            m_text += line;
        }
    }

    // True if another message would be kept; check before formatting one.
    bool hasRoom() const { return m_text.size() < avi::kMaxErrorText; }

    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};
