// How the report's page looks: on paper, on a phone, by day and by night.
#pragma once

#include <string_view>

namespace importhost::validate {

std::string_view pageStyle();

}  // namespace importhost::validate
