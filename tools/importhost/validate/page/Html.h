// Pieces of an HTML page. What comes from elsewhere goes through htmlText and nowhere else.
#pragma once

#include <string>
#include <string_view>

namespace importhost::validate {

// Text as content or inside a quoted attribute: nothing in it is taken for markup. What is no UTF-8, and characters
// that are not for display, become U+FFFD.
std::string htmlText(std::string_view text);

// "<name class="classes">content</name>"; the content is markup.
std::string element(std::string_view name, std::string_view classes, std::string_view content);

// The same around text.
std::string textElement(std::string_view name, std::string_view classes, std::string_view text);

}  // namespace importhost::validate
