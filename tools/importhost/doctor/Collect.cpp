#include "importhost/doctor/Collect.h"

#include "importhost/doctor/LoadTrial.h"
#include "importhost/doctor/Search.h"
#include "importhost/doctor/System.h"

#include "hostkit/plugin/PluginLog.h"

#include <algorithm>
#include <stdexcept>

namespace importhost::doctor {

namespace {

// The resource by which the host recognises an importer.
constexpr std::string_view kMarkType = "IMPT";
constexpr std::string_view kMarkName = "#1000";

std::optional<bool> importerMark(const hostkit::LibraryFile& file) {
    if (!file.resources) {
        return std::nullopt;
    }
    return std::any_of(file.resources->begin(), file.resources->end(), [](const hostkit::LibraryResource& resource) {
        return resource.type == kMarkType && resource.name == kMarkName;
    });
}

CodecFile codecFile(const std::filesystem::path& path) {
    CodecFile codec{path, "", std::nullopt, ""};
    try {
        const hostkit::LibraryFile file = hostkit::readLibraryFile(path);
        codec.version = fileVersion(file);
        codec.description = fileDescription(file);
    } catch (const std::runtime_error& error) {
        codec.unreadable = error.what();
    }
    return codec;
}

Examined examine(const std::filesystem::path& plugin) {
    Examined examined;
    PluginCopy& copy = examined.copy;
    copy.path = plugin;
    try {
        const hostkit::LibraryFile file = hostkit::readLibraryFile(plugin);
        copy.version = fileVersion(file);
        copy.hasImporterMark = importerMark(file);
    } catch (const std::runtime_error& error) {
        copy.unreadable = error.what();
        return examined;
    }
    const LoadTrial trial = tryToLoad(plugin);
    copy.loads = trial.loads;
    copy.loadFailure = trial.failure;
    const auto found = trial.codec.empty() ? findLibrary(codecFileName(), plugin.parent_path())
                                           : std::optional<std::filesystem::path>(trial.codec);
    if (found) {
        examined.codec = codecFile(*found);
    }
    return examined;
}

// Hosts may write the same folder in different letter case.
bool isExamined(const std::vector<Examined>& copies, const std::filesystem::path& path) {
    return std::any_of(copies.begin(), copies.end(), [&](const Examined& one) {
        std::error_code ignored;
        return std::filesystem::equivalent(one.copy.path, path, ignored);
    });
}

// Hosts may share a folder, and one folder may contain another.
void examineFolders(Facts& facts) {
    for (const PluginFolder& folder : facts.folders) {
        const FolderContent content = contentOf(folder.path);
        for (const std::filesystem::path& plugin : content.plugins) {
            if (!isExamined(facts.copies, plugin)) {
                facts.copies.push_back(examine(plugin));
            }
        }
        for (const std::filesystem::path& shortcut : content.shortcuts) {
            if (std::find(facts.shortcuts.begin(), facts.shortcuts.end(), shortcut) == facts.shortcuts.end()) {
                facts.shortcuts.push_back(shortcut);
            }
        }
    }
}

}  // namespace

LogState logState(bool isOn, const std::filesystem::path& folder) {
    LogState state{isOn, folder, std::nullopt, std::nullopt, 0};
    std::error_code ignored;
    for (const std::filesystem::path& part : {folder.parent_path(), folder}) {
        if (std::filesystem::exists(part, ignored) && !std::filesystem::is_directory(part, ignored)) {
            state.blockedBy = part;
            return state;
        }
    }
    // Names contain the time of creation.
    for (std::filesystem::directory_iterator entry(folder, ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
        if (entry->path().extension() == ".log" && (!state.newest || entry->path() > *state.newest)) {
            state.newest = entry->path();
            state.newestBytes = entry->file_size(ignored);
        }
    }
    return state;
}

Facts collectFacts(const std::filesystem::path& named, const std::filesystem::path& own) {
    Facts facts;
    facts.system = systemName();
    facts.hostRunsHere = hostRunsHere();
    if (facts.hostRunsHere) {
        facts.folders = pluginFolders(registeredHosts(), usualPluginFolder());
    }
    if (!named.empty() || !facts.hostRunsHere) {
        facts.copyWasNamed = true;
        facts.copies.push_back(examine(std::filesystem::absolute(named.empty() ? own : named)));
    } else {
        examineFolders(facts);
    }
    facts.log = logState(hostkit::LogSwitch::isOn(), hostkit::pluginLogFolder());
    return facts;
}

}  // namespace importhost::doctor
