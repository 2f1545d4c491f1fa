// The messages that parsing collects, one line each.
#pragma once

#include "avi/ParserLimits.h"

#include <string>
#include <string_view>

class ErrorText {
public:
    /// Appends one message, which ends in a line feed. Messages past the limit are dropped.
    void add(std::string_view line) {
        if (m_text.size() < avi::kMaxErrorText) {
            m_text += line;
        }
    }

    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};
