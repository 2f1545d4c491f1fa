// Finds the folders in which hosts look for plug-ins, and the plug-ins there.
#pragma once

#include "importhost/doctor/Facts.h"
#include "importhost/doctor/System.h"

namespace importhost::doctor {

// The folders of these hosts, newest host first, each in the spelling that exists ("Plug-ins" or "Plugins"; both if
// both exist, as the host does), otherwise as registered. Without hosts: the usual folder.
std::vector<PluginFolder> pluginFolders(std::vector<RegisteredHost> hosts, const std::filesystem::path& usual);

// Contents of a folder and its subfolders. Unreadable ones are skipped.
struct FolderContent {
    std::vector<std::filesystem::path> plugins;         // sorted; includes renamed ones with our name
    std::vector<std::filesystem::path> shortcuts;       // to plug-ins
};
FolderContent contentOf(const std::filesystem::path& folder);

}  // namespace importhost::doctor
