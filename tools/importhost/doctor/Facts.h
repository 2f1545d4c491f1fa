// What `importhost doctor` knows about an installation. Plain data: collected by one module, judged and printed by
// another.
#pragma once

#include "importhost/doctor/FileVersion.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace importhost::doctor {

// A folder in which a host looks for plug-ins. Folders that do not exist are kept too: they explain a missing plug-in.
struct PluginFolder {
    std::filesystem::path path;
    std::string hostVersion;                    // as the system has it, "22.0"; empty: the usual folder
    bool exists = false;
};

// A file that is our plug-in, or has its name.
struct PluginCopy {
    std::filesystem::path path;
    std::string unreadable;                     // why its file is not a library; empty if it is one
    std::optional<FileVersion> version;         // as stated in its file
    std::optional<bool> hasImporterMark;        // of an importer, as a resource; empty on other systems
    bool loads = false;
    std::string loadFailure;                    // a sentence, if it cannot be loaded
};

// The codec library, as the system finds it for a copy of the plug-in.
struct CodecFile {
    std::filesystem::path path;
    std::string unreadable;                     // why it is not a library of this system; empty if it is one
    std::optional<FileVersion> version;
    std::string description;                    // as stated in its file; may be empty
};

struct LogState {
    bool isOn = false;
    std::filesystem::path folder;
    std::optional<std::filesystem::path> blockedBy;     // a file in place of the folder or its parent
    std::optional<std::filesystem::path> newest;
    std::uintmax_t newestBytes = 0;
};

struct Examined {
    PluginCopy copy;
    std::optional<CodecFile> codec;             // empty if not found
};

struct Facts {
    std::string system;                         // "Windows 10 Pro, build 19045"
    bool hostRunsHere = false;                  // false: a system without the host; the folders are unused
    std::vector<PluginFolder> folders;          // newest host first
    std::vector<std::filesystem::path> shortcuts;       // to the plug-in, in one of the folders
    std::vector<Examined> copies;               // in the order of the folders
    bool copyWasNamed = false;                  // on the command line; then the folders are not judged
    LogState log;
};

}  // namespace importhost::doctor
