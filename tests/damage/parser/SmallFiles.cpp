#include "damage/parser/SmallFiles.h"

#include "damage/catalogue/Catalogue.h"
#include "damage/parser/Pieces.h"

namespace damage {

namespace {

using namespace aviwriter;

// Short chunks instead of pictures and sound, which the parser does not read.
Bytes media() {
    return list("movi", {chunk("00dc", filled(20, 1)), chunk("01wb", filled(7, 2)), chunk("00dc", filled(9, 3)),
                         chunk("01wb", filled(8, 4))});
}

Bytes mediaIndex() {
    return idx1({{.offset = 4, .length = 20},
                 {.chunkId = "01wb", .offset = 32, .length = 7},
                 {.flags = 0, .offset = 48, .length = 9},
                 {.chunkId = "01wb", .offset = 66, .length = 8}});
}

Bytes plain() { return riff("AVI ", {headers({videoList(2), soundList(4)}), media(), mediaIndex()}); }

// A super index for each stream; its entries are filled in once all positions are known.
Bytes openDml(const std::vector<Bytes>& moreHeaders, bool hasIdx1) {
    const SuperIndex super = {.entries = std::vector<SuperIndexEntry>(2)};
    const auto part = [](std::uint64_t base) {
        return list("movi", {chunk("00dc", filled(20, 1)), chunk("01wb", filled(7, 2)),
                             ix("ix00", {.baseOffset = base, .entries = {{12, 20}, {12, 0}}}),
                             ix("ix01", {.chunkId = "01wb", .baseOffset = base, .entries = {{40, 7 | kNotKeyFrame}}})});
    };
    std::vector<Bytes> hdrl = {avih({.streams = 2}), videoList(2, {indx(super)}), soundList(4, {indx(super)})};
    hdrl.insert(hdrl.end(), moreHeaders.begin(), moreHeaders.end());
    std::vector<Bytes> first = {list("hdrl", hdrl), part(0)};
    if (hasIdx1) {
        first.push_back(idx1({{.offset = 4, .length = 20}, {.chunkId = "01wb", .offset = 32, .length = 7}}));
    }
    Bytes file = riff("AVI ", first) + riff("AVIX", {part(1)});
    for (std::size_t stream = 0; stream < 2; ++stream) {
        const char* name = stream == 0 ? "ix00" : "ix01";
        for (std::size_t i = 0; i < 2; ++i) {
            const std::uint32_t size = stream == 0 ? 8 + 24 + 16 : 8 + 24 + 8;
            overwrite(file, superEntryAt(file, stream, i), u64(positionOf(file, name, i)) + u32(size));
        }
    }
    return file;
}

Bytes openDmlAlone() { return openDml({}, false); }
Bytes openDmlBesideIdx1() { return openDml({odml(3)}, true); }

Bytes openDmlOfManyEntries() {
    Bytes file = openDmlBesideIdx1();
    overwrite(file, positionOf(file, "indx") + 8 + 4, u32(3));
    return file;
}

Bytes openDmlThatLeadsNowhere() {
    Bytes file = openDmlBesideIdx1();
    overwrite(file, superEntryAt(file, 1, 1), u64(std::uint64_t{1} << 40));
    return file;
}

Bytes openDmlOfOtherEntries() {
    Bytes file = openDmlBesideIdx1();
    overwrite(file, positionOf(file, "ix01") + 8, u16(4));
    return file;
}

Bytes brokenStreamBetweenOthers() {
    return riff("AVI ", {headers({videoList(2), list("strl", {strh({})}), soundList(4), list("strl", {}),
                                  list("strl", {chunk("strh", filled(10)), strf({})})}),
                         list("INFO", {chunk("ISFT", text("odd"))}), media(), mediaIndex()});
}

Bytes raggedIdx1() {
    return riff("AVI ", {headers({videoList(2)}), media(), chunk("idx1", bytesOf(Idx1Entry{.length = 20}) +
                                                                         text("00dc") + u8(0x10))});
}

Bytes idx1BeforeTheMedia() { return riff("AVI ", {headers({videoList(2)}), mediaIndex(), media()}); }

Bytes listsThatReachTooFar() {
    return riff("AVI ", {listClaiming("LIST", "hdrl", 5000, {avih({}), videoList(2), listClaiming("LIST", "strl", 900,
                                      {strh({.type = "auds"}), strf(waveFormatEx({}))})}),
                         media(), mediaIndex()});
}

Bytes listsInsideLists() {
    Bytes inner = chunk("JUNK", filled(3));
    for (int i = 0; i < 30; ++i) {
        inner = list("deep", {inner, chunk("JUNK", {})});
    }
    return riff("AVI ", {inner, headers({videoList(2), soundList(4)}), media(), mediaIndex()});
}

Bytes noClip() { return riff("WAVE", {chunk("fmt ", pcmWaveFormat({})), chunk("data", filled(40, 7))}); }

constexpr SmallFile kSmallFiles[] = {
    {"plain", plain},
    {"opendml-alone", openDmlAlone},
    {"opendml-beside-idx1", openDmlBesideIdx1},
    {"opendml-of-many-entries", openDmlOfManyEntries},
    {"opendml-that-leads-nowhere", openDmlThatLeadsNowhere},
    {"opendml-of-other-entries", openDmlOfOtherEntries},
    {"broken-stream-between-others", brokenStreamBetweenOthers},
    {"ragged-idx1", raggedIdx1},
    {"idx1-before-the-media", idx1BeforeTheMedia},
    {"lists-that-reach-too-far", listsThatReachTooFar},
    {"lists-inside-lists", listsInsideLists},
    {"no-clip", noClip},
    {"whole-clip", honestClip},
    {"whole-opendml-clip", [] { return openDmlClip(5); }},
};

}  // namespace

std::span<const SmallFile> smallFiles() { return kSmallFiles; }

}  // namespace damage
