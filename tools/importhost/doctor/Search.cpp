#include "importhost/doctor/Search.h"

#include "hostkit/system/Text.h"

#include <algorithm>

namespace importhost::doctor {

namespace {

bool isThere(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

std::string inSmallLetters(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c); });
    return text;
}

// Removes a separator at the end.
std::filesystem::path plain(const std::filesystem::path& folder) {
    return folder.has_filename() ? folder : folder.parent_path();
}

// The same path with each folder "Plug-ins" changed to "Plugins" or the other way round.
std::filesystem::path otherSpelling(const std::filesystem::path& folder) {
    std::filesystem::path other;
    for (const std::filesystem::path& part : folder) {
        const std::string name = inSmallLetters(hostkit::toUtf8(part));
        other /= name == "plug-ins" ? "Plugins" : name == "plugins" ? "Plug-ins" : part;
    }
    return other;
}

void addFolder(std::vector<PluginFolder>& folders, const std::filesystem::path& registered,
               const std::string& version) {
    const std::filesystem::path folder = plain(registered);
    const std::filesystem::path other = otherSpelling(folder);
    const bool hasOther = other != folder && isThere(other);
    if (isThere(folder) || !hasOther) {
        folders.push_back({folder, version, isThere(folder)});
    }
    if (hasOther) {
        folders.push_back({other, version, true});
    }
}

bool isOurs(const std::filesystem::path& file, const char* extension) {
    const std::string name = inSmallLetters(hostkit::toUtf8(file.filename()));
    return name.find("quorvane") != std::string::npos && name.ends_with(extension);
}

}  // namespace

std::vector<PluginFolder> pluginFolders(std::vector<RegisteredHost> hosts, const std::filesystem::path& usual) {
    std::stable_sort(hosts.begin(), hosts.end(), [](const RegisteredHost& one, const RegisteredHost& other) {
        return versionOf(one.version) > versionOf(other.version);
    });
    std::vector<PluginFolder> folders;
    for (const RegisteredHost& host : hosts) {
        addFolder(folders, host.folder, host.version);
    }
    if (hosts.empty()) {
        addFolder(folders, usual, "");
    }
    return folders;
}

FolderContent contentOf(const std::filesystem::path& folder) {
    FolderContent content;
    std::error_code failure;
    std::filesystem::recursive_directory_iterator entry(
        folder, std::filesystem::directory_options::skip_permission_denied, failure);
    for (; !failure && entry != std::filesystem::recursive_directory_iterator(); entry.increment(failure)) {
        if (isOurs(entry->path(), ".prm")) {
            content.plugins.push_back(entry->path());
        } else if (isOurs(entry->path(), ".lnk")) {
            content.shortcuts.push_back(entry->path());
        }
    }
    std::sort(content.plugins.begin(), content.plugins.end());
    std::sort(content.shortcuts.begin(), content.shortcuts.end());
    return content;
}

}  // namespace importhost::doctor
