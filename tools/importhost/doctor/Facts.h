// What `importhost doctor` knows of an installation. Plain data: collected by one side, judged and printed by another.
#pragma once

#include "importhost/doctor/FileVersion.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace importhost::doctor {

// A folder in which a host looks for plug-ins. One that does not exist is kept too: it explains a missing plug-in.
struct PluginFolder {
    std::filesystem::path path;
    std::string hostVersion;                    // as the system names it, "22.0"; empty: the usual folder
    bool exists = false;
};

// One file that is our plug-in, or bears its name.
struct PluginCopy {
    std::filesystem::path path;
    std::string unreadable;                     // why its file is no library; empty when it is one
    std::optional<FileVersion> version;         // as its file states it
    std::optional<bool> hasImporterMark;        // the resource by which the host knows an importer, where there is such
    bool loads = false;
    std::string loadFailure;                    // a sentence, when it does not load
};

// The library behind the codec, as the system finds it for a copy of the plug-in.
struct CodecFile {
    std::filesystem::path path;
    std::string unreadable;                     // why it is no library of this system; empty when it is one
    std::optional<FileVersion> version;
    std::string description;                    // as its file states it; may be empty
};

struct LogState {
    bool isOn = false;
    std::filesystem::path folder;
    std::optional<std::filesystem::path> blockedBy;     // a file that stands where the folder or its parent must be
    std::optional<std::filesystem::path> newest;
    std::uintmax_t newestBytes = 0;
};

struct Examined {
    PluginCopy copy;
    std::optional<CodecFile> codec;             // nothing when it is found nowhere
};

struct Facts {
    std::string system;                         // "Windows 10 Pro, build 19045"
    bool hostRunsHere = false;                  // false: a system without the host; the folders mean nothing
    std::vector<PluginFolder> folders;          // newest host first
    std::vector<std::filesystem::path> shortcuts;       // to the plug-in, in one of the folders
    std::vector<Examined> copies;               // in the order of the folders
    bool copyWasNamed = false;                  // on the command line; the folders are not judged then
    LogState log;
};

}  // namespace importhost::doctor
