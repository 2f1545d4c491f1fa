// Where hosts look for plug-ins, and what lies there.
#pragma once

#include "importhost/doctor/Facts.h"
#include "importhost/doctor/System.h"

namespace importhost::doctor {

// The folders of these hosts, newest host first, each in the spelling that exists ("Plug-ins" or "Plugins", which is
// the host's way too; both when both exist), or else as it was registered. Without hosts: the usual folder.
std::vector<PluginFolder> pluginFolders(std::vector<RegisteredHost> hosts, const std::filesystem::path& usual);

// A folder with its subfolders. What cannot be read is passed over.
struct FolderContent {
    std::vector<std::filesystem::path> plugins;         // in alphabetical order; also renamed ones with our name in it
    std::vector<std::filesystem::path> shortcuts;       // to such
};
FolderContent contentOf(const std::filesystem::path& folder);

}  // namespace importhost::doctor
