#include "importhost/console/Refusal.h"

#include <fstream>
#include <string_view>

namespace importhost {

namespace {

// The kind of a file that is not AVI; empty for an AVI file.
std::string otherKind(const std::filesystem::path& path) {
    char head[12] = {};
    std::ifstream file(path, std::ios::binary);
    file.read(head, sizeof head);
    const std::string_view text(head, sizeof head);
    if (file.gcount() == 0) {
        return "it is empty";
    }
    return text.starts_with("RIFF") && text.ends_with("AVI ") ? "" : "it does not begin as an AVI file does";
}

}  // namespace

std::string describeRefusal(const std::filesystem::path& path) {
    const std::string kind = otherKind(path);
    return kind.empty() ? "the plug-in's log has the cause (importhost info --log)" : kind;
}

}  // namespace importhost
