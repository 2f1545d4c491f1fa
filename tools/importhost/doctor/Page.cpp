#include "importhost/doctor/Diagnosis.h"

#include "hostkit/system/Text.h"

namespace importhost::doctor {

namespace {

using hostkit::toUtf8;

// One fact, indented below its subject.
std::string factLine(std::string name, const std::string& value) {
    name.resize(std::max<std::size_t>(name.size(), 15), ' ');
    return "    " + name + " " + value + "\n";
}

std::string versionText(const std::optional<FileVersion>& version) {
    return version ? asText(*version) : "not stated in the file";
}

std::string foldersText(const Facts& facts) {
    std::string text = "\nWhere the host looks for plug-ins\n";
    if (!facts.hostRunsHere) {
        return text + "  Not examined: Premiere Pro for this plug-in runs on Windows only.\n";
    }
    for (const PluginFolder& folder : facts.folders) {
        text.append("  ").append(folder.hostVersion.empty() ? "usual folder" : "Premiere Pro " + folder.hostVersion);
        text.append("\n    ").append(toUtf8(folder.path)).append(folder.exists ? "\n" : "   (does not exist)\n");
    }
    return text;
}

std::string codecText(const std::optional<CodecFile>& codec) {
    if (!codec) {
        return factLine("codec library", "not found");
    }
    std::string text = factLine("codec library", toUtf8(codec->path));
    if (!codec->unreadable.empty()) {
        return text + factLine("", codec->unreadable);
    }
    return text + factLine("codec's name", codec->description.empty() ? "not stated in the file" : codec->description) +
           factLine("codec's version", versionText(codec->version));
}

std::string copyText(const Examined& examined) {
    const PluginCopy& copy = examined.copy;
    std::string text = "  " + toUtf8(copy.path) + "\n";
    if (!copy.unreadable.empty()) {
        return text + factLine("no library", copy.unreadable);
    }
    text += factLine("version", versionText(copy.version));
    if (copy.hasImporterMark) {
        text += factLine("an importer", *copy.hasImporterMark ? "yes" : "no: resource IMPT 1000 is missing");
    }
    text += factLine("can be loaded", copy.loads ? "yes" : "no: " + copy.loadFailure);
    return text + codecText(examined.codec);
}

std::string copiesText(const Facts& facts) {
    std::string text = "\nThe plug-in\n";
    for (const Examined& examined : facts.copies) {
        text += copyText(examined);
    }
    return facts.copies.empty() ? text + "  not there\n" : text;
}

std::string logText(const LogState& log) {
    std::string text = "\nThe log\n" + factLine("switch", log.isOn ? "on" : "off") +
                       factLine("folder", toUtf8(log.folder));
    return text + factLine("newest file", log.newest ? toUtf8(log.newest->filename()) + ", " +
                                                           std::to_string(log.newestBytes) + " bytes"
                                                     : "none");
}

std::string fixesText(const std::vector<std::string>& toFix) {
    if (toFix.empty()) {
        return "\nNothing to fix.\n";
    }
    std::string text = "\nTo fix\n";
    for (std::size_t i = 0; i < toFix.size(); ++i) {
        text.append("  ").append(std::to_string(i + 1)).append(". ").append(toFix[i]).append("\n");
    }
    return text;
}

}  // namespace

std::string pageOf(const Facts& facts, const std::string& programVersion, const std::vector<std::string>& toFix) {
    return "importhost " + programVersion + " doctor\n" + facts.system + "\n" + foldersText(facts) + copiesText(facts) +
           logText(facts.log) + fixesText(toFix);
}

}  // namespace importhost::doctor
