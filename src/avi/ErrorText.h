// The messages that parsing collects, one line each.
#pragma once

#include "avi/ParserLimits.h"

#include <string>
#include <string_view>

class ErrorText {
public:
    /// Appends one message, which ends in a line feed. Messages past the limit are dropped.
    void add(std::string_view line) {
        if (hasRoom()) {
            m_text += line;
        }
    }

    /// Whether a further message would be kept; making one is not free.
    bool hasRoom() const { return m_text.size() < avi::kMaxErrorText; }

    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};
