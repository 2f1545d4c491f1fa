// The libraries that an importer may be loaded with: the codec's, and what a freshly installed system has.
#pragma once

#include <span>
#include <string_view>

namespace importhost::validate {

// In small letters; * stands for any text.
std::span<const std::string_view> allowedImports();

}  // namespace importhost::validate
