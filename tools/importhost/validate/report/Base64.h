// Bytes as text, for pictures inside a page.
#pragma once

#include <string>
#include <string_view>

namespace importhost::validate {

// With padding, without line ends.
std::string base64(std::string_view bytes);

}  // namespace importhost::validate
