// Where a run may write its report: a path that was given by mistake must not cost a user a film.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace importhost::validate {

// Throws UsageError when this UTF-8 path cannot be written, is one of the run's inputs, or is a file that is there
// and not an earlier report: one that does not begin as `beginning` says, in whatever case. An empty path is good.
// A file that is missing is made, empty: better found before a long run than after it.
void expectOutput(const std::string& path, std::string_view beginning,
                  const std::vector<std::filesystem::path>& inputs);

}  // namespace importhost::validate
