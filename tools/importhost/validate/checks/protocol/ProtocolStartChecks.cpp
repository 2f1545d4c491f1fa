// What the plug-in says of itself before any file is opened.
#include "importhost/validate/checks/protocol/ProtocolParts.h"
#include "importhost/validate/checks/stage/PlayedPlugin.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <limits>
#include <set>

namespace importhost::validate {

namespace {

constexpr csSDK_int32 kMost = std::numeric_limits<csSDK_int32>::max();

constexpr csSDK_uint32 kFileType = 0x41564956;
constexpr csSDK_int32 kPriority = 200;
constexpr std::size_t kSubtypes = 16;

using hostkit::resultText;
using hostkit::valueOf;

std::string listText(const hostkit::SubTypesAnswer& list) {
    std::string text;
    for (const imSubTypeDescriptionRec& row : list.records) {
        text += hostkit::codeText(static_cast<csSDK_uint32>(valueOf(row.subType))) + " '" +
                hostkit::toUtf8(hostkit::fieldText(row.subTypeName, std::size(row.subTypeName))) + "' ";
    }
    return text;
}

// Names end within their fields, and no code or name stands twice.
void expectTellingRows(CheckRun& run, const hostkit::SubTypesAnswer& list) {
    std::set<csSDK_int64> codes;
    std::set<std::u16string> names;
    for (const imSubTypeDescriptionRec& row : list.records) {
        const csSDK_int64 code = row.subType;
        const std::u16string name = hostkit::fieldText(row.subTypeName, std::size(row.subTypeName));
        const std::string which = "subtype " + hostkit::codeText(static_cast<csSDK_uint32>(code));
        run.expect(codes.insert(code).second, which + " is listed twice");
        run.expect(!name.empty(), which + " has no name");
        run.expect(name.size() < std::size(row.subTypeName), which + " has a name without an end");
        run.expect(names.insert(name).second, which + " has the name of another: '" + hostkit::toUtf8(name) + "'");
    }
}

}  // namespace

void formatsEnd(CheckRun& run) {
    PlayedPlugin plugin(run);
    const auto& formats = plugin.started().formats;
    run.expectResult("the answer that ends the list of import formats", formats.back().result, imBadFormatIndex);
    run.expect(formats.size() > 1, "no import format is offered");
    for (const csSDK_int32 index : {1000, kMost, -1, std::numeric_limits<csSDK_int32>::min()}) {
        run.expectResult("the answer to import format " + std::to_string(index), plugin.session().format(index).result,
                         imBadFormatIndex);
    }
}

void formatFacts(CheckRun& run) {
    PlayedPlugin plugin(run);
    run.expectEqual("import formats, the end of the list included", plugin.started().formats.size(), std::size_t{2});
    const auto format = plugin.session().format(0);
    run.expectEqual("the file type", hostkit::codeTextHighFirst(static_cast<csSDK_uint32>(valueOf(format->filetype))),
                    hostkit::codeTextHighFirst(kFileType));
    run.expectEqual("the name", hostkit::fieldText(format->FormatName, std::size(format->FormatName)), "Quorvane AVI");
    run.expectEqual("the short name", hostkit::fieldText(format->FormatShortName, std::size(format->FormatShortName)),
                    "Quorvane AVI");
    run.expectEqual("the extension",
                    hostkit::fieldText(format->PlatformExtension, std::size(format->PlatformExtension)), "avi");
}

void subtypeList(CheckRun& run) {
    PlayedPlugin plugin(run);
    const hostkit::SubTypesAnswer list = plugin.session().subTypeNames(static_cast<csSDK_int32>(kFileType));
    run.expectResult("the answer", list.result);
    run.expectEqual("subtypes", list.records.size(), kSubtypes);
    expectTellingRows(run, list);
    for (const csSDK_int32 fileType : {0, -1, 0x12345678}) {
        run.expectEqual("the list for file type " + std::to_string(fileType),
                        listText(plugin.session().subTypeNames(fileType)), listText(list));
    }
}

void startAnswers(CheckRun& run) {
    PlayedPlugin plugin(run);
    const hostkit::StartAnswer& start = plugin.started();
    run.expectResult("the answer to imInit", start.init.result);
    run.expectEqual("the priority", valueOf(start.init->priority), kPriority);
    run.expectEqual("avoidAudioConform", static_cast<int>(start.init->avoidAudioConform), 1);
    run.expectResult("the answer to imGetSupports8", start.supports8, malSupports8);
}

void startInAnyOrder(CheckRun& run) {
    hostkit::Host host;
    host.calls().sendLines([&trace = run.trace()](const std::string& line) { trace.add(line); });
    {
        const hostkit::PluginLibrary library(run.plugin());
        hostkit::ImporterSession session(host, library.entry());
        const auto expectAnswer = [&](const std::string& what, csSDK_int32 found, csSDK_int32 wanted) {
            run.expectResult(what, found, wanted);
        };
        expectAnswer("the version query before imInit", session.supports8(), malSupports8);
        expectAnswer("the first format before imInit", session.format(0).result, imNoErr);
        expectAnswer("imShutdown before imInit", session.shutdown(), imNoErr);
        expectAnswer("imInit", session.init().result, imNoErr);
        expectAnswer("imInit once more", session.init().result, imNoErr);
        run.expectEqual("suites held after imInit came twice", host.suitesHeld(), 1);
        expectAnswer("imShutdown", session.shutdown(), imNoErr);
        run.expectEqual("suites held after imShutdown", host.suitesHeld(), 0);
        expectAnswer("imShutdown once more", session.shutdown(), imNoErr);
        expectAnswer("the version query after imShutdown", session.supports8(), malSupports8);
        expectAnswer("imInit after imShutdown", session.init().result, imNoErr);
        expectAnswer("imShutdown at the end", session.shutdown(), imNoErr);
    }
    for (const std::string& problem : host.problems()) {
        run.fail(problem);
    }
}

}  // namespace importhost::validate
