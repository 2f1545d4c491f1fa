// A list of names and values on the page.
#pragma once

#include "importhost/validate/page/Html.h"

#include <string>
#include <string_view>

namespace importhost::validate {

class FactList {
public:
    // A value that is empty is left out.
    void add(std::string_view name, std::string_view value) { addMarkup(name, htmlText(value)); }
    void addCode(std::string_view name, std::string_view value) {
        addMarkup(name, value.empty() ? "" : textElement("code", "", value));
    }
    void addMarkup(std::string_view name, const std::string& markup) {
        if (!markup.empty()) {
            m_rows += textElement("dt", "", name) + element("dd", "", markup);
        }
    }
    std::string markup() const { return m_rows.empty() ? "" : element("dl", "facts", m_rows); }

private:
    std::string m_rows;
};

// "1.4 MiB (1 468 006 bytes)".
std::string sizeText(double bytes);

}  // namespace importhost::validate
