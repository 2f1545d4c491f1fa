#include "importhost/doctor/Diagnosis.h"

#include "importhost/doctor/LoadTrial.h"

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/system/Text.h"

#include <algorithm>

namespace importhost::doctor {

namespace {

using hostkit::toUtf8;

constexpr char kStartWithShift[] = "Then start Premiere Pro with the Shift key held: it does not try again by itself.";

class Diagnosis {
public:
    explicit Diagnosis(const Facts& facts) : m_facts(facts) {}

    std::vector<std::string> run(const FileVersion& programVersion) {
        if (m_facts.hostRunsHere && !m_facts.copyWasNamed) {
            judgeHosts();
            judgePlaces();
        }
        for (const Examined& examined : m_facts.copies) {
            judgeCopy(examined);
        }
        judgeAge(programVersion);
        judgeLog();
        return m_toFix;
    }

private:
    // The same cause in two copies is listed once.
    void add(const std::string& text) {
        if (std::find(m_toFix.begin(), m_toFix.end(), text) == m_toFix.end()) {
            m_toFix.push_back(text);
        }
    }

    void judgeHosts() {
        if (m_facts.folders.front().hostVersion.empty()) {
            add("No Premiere Pro is registered on this machine; the usual folder was looked at. Install Premiere Pro, "
                "or repair its installation.");
        }
        if (!newestHost()) {
            add("The folder for plug-ins does not exist: " + toUtf8(m_facts.folders.front().path) +
                ". Run the setup of the plug-in: it makes the folder.");
        }
    }

    // The newest host's folder that exists. Folders of removed hosts stay registered.
    const PluginFolder* newestHost() const {
        for (const PluginFolder& folder : m_facts.folders) {
            if (folder.exists) {
                return &folder;
            }
        }
        return nullptr;
    }

    void judgePlaces() {
        for (const std::filesystem::path& shortcut : m_facts.shortcuts) {
            add("A shortcut is not followed by the host: " + toUtf8(shortcut) +
                ". Delete it, and copy the plug-in itself there.");
        }
        const PluginFolder* newest = newestHost();
        if (newest && copiesFor(newest->hostVersion).empty()) {
            add("The plug-in is not where " + nameOf(*newest) + " looks. Run the setup of the plug-in, or copy " +
                hostkit::PluginLibrary::usualFileName() + " to " + toUtf8(newest->path) + ".");
        }
        for (const PluginFolder& folder : m_facts.folders) {
            judgeCopiesFor(folder);
        }
    }

    static std::string nameOf(const PluginFolder& folder) {
        return folder.hostVersion.empty() ? "Premiere Pro" : "Premiere Pro " + folder.hostVersion;
    }

    // The copies seen by one host, in both spellings of its folder.
    std::vector<const PluginCopy*> copiesFor(const std::string& hostVersion) const {
        std::vector<const PluginCopy*> copies;
        for (const Examined& examined : m_facts.copies) {
            const bool isSeen =
                std::any_of(m_facts.folders.begin(), m_facts.folders.end(), [&](const PluginFolder& folder) {
                    return folder.hostVersion == hostVersion && isIn(folder.path, examined.copy.path);
                });
            if (isSeen) {
                copies.push_back(&examined.copy);
            }
        }
        return copies;
    }

    static bool isIn(const std::filesystem::path& folder, const std::filesystem::path& file) {
        return std::mismatch(folder.begin(), folder.end(), file.begin(), file.end()).first == folder.end();
    }

    void judgeCopiesFor(const PluginFolder& folder) {
        const std::vector<const PluginCopy*> copies = copiesFor(folder.hostVersion);
        if (copies.size() < 2) {
            return;
        }
        const PluginCopy* best = *std::max_element(
            copies.begin(), copies.end(),
            [](const PluginCopy* one, const PluginCopy* other) { return one->version < other->version; });
        std::string text = nameOf(folder) + " finds " + std::to_string(copies.size()) +
                           " copies of the plug-in and may load an older one. Keep " + toUtf8(best->path) + ", delete";
        for (const PluginCopy* copy : copies) {
            if (copy != best) {
                text.append(text.ends_with("delete") ? " " : " and ").append(toUtf8(copy->path));
            }
        }
        add(text + ".");
    }

    void judgeCopy(const Examined& examined) {
        const PluginCopy& copy = examined.copy;
        if (!copy.unreadable.empty()) {
            add("The plug-in cannot be used: " + copy.unreadable + " Install it again.");
            return;
        }
        if (copy.hasImporterMark == false) {
            add("The host does not take " + toUtf8(copy.path) +
                " for an importer: its resource IMPT 1000 is missing. Install the plug-in again.");
        }
        if (copy.loads) {
            return;
        }
        if (!examined.codec) {
            add("The codec library " + codecFileName() +
                " is not found, and without it the plug-in cannot be loaded. Install the Quorvane codec. " +
                kStartWithShift);
        } else if (!examined.codec->unreadable.empty()) {
            add("The codec library cannot be used: " + examined.codec->unreadable +
                " Install the 64-bit Quorvane codec. " + kStartWithShift);
        } else {
            add(copy.loadFailure + " Install the newest Quorvane codec and the newest plug-in. " + kStartWithShift);
        }
    }

    void judgeAge(const FileVersion& programVersion) {
        const PluginCopy* newest = nullptr;
        for (const Examined& examined : m_facts.copies) {
            if (!newest || newest->version < examined.copy.version) {
                newest = &examined.copy;
            }
        }
        if (newest && newest->version && *newest->version < programVersion) {
            add("The plug-in is of version " + asText(*newest->version) + ", older than this program's " +
                asText(programVersion) + ". Run the setup of version " + asText(programVersion) + ".");
        }
    }

    void judgeLog() {
        if (m_facts.log.blockedBy) {
            add("No log can be written: " + toUtf8(*m_facts.log.blockedBy) +
                " is a file where a folder must be. Move it away.");
        }
    }

    const Facts& m_facts;
    std::vector<std::string> m_toFix;
};

}  // namespace

std::vector<std::string> thingsToFix(const Facts& facts, const FileVersion& programVersion) {
    return Diagnosis(facts).run(programVersion);
}

}  // namespace importhost::doctor
