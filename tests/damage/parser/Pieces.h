// The parts of damaged files: one small intact clip, in pieces.
#pragma once

#include "aviwriter/Blocks.h"
#include "damage/catalogue/Sounds.h"

#include <cstdint>
#include <vector>

namespace damage {

using aviwriter::Bytes;

inline std::uint32_t u32Of(std::size_t value) { return static_cast<std::uint32_t>(value); }

// --- The clip's pictures, 8 x 4 pixels at 25 per second, and its 16-bit stereo sound at 48000 Hz --------------------

constexpr std::uint32_t kPictures = 10;
constexpr std::uint32_t kSoundPerPicture = 1920;                             // sample frames
constexpr std::uint32_t kSoundFrames = kPictures * kSoundPerPicture;

// A compressed picture in which every sample is 40 + `number`.
Bytes pictureFrame(std::uint32_t number);
constexpr int kFirstPictureValue = 40;

// The sound that belongs to a picture.
Bytes soundChunk(std::uint32_t number, const SoundShape& shape = {});

// --- Headers --------------------------------------------------------------------------------------------------------

// "strf" data of the video; and the same with other extra data.
Bytes videoFormat();
Bytes videoFormat(const Bytes& extraData);

// "strl" lists; `more` follows header and format.
Bytes videoList(std::uint32_t frames = kPictures, const std::vector<Bytes>& more = {});
Bytes soundList(std::uint32_t sampleFrames = kSoundFrames, const std::vector<Bytes>& more = {});
Bytes streamList(const aviwriter::StreamHeader& header, const Bytes& format, const std::vector<Bytes>& more = {});

// The stream headers in those lists.
aviwriter::StreamHeader videoHeader(std::uint32_t frames = kPictures);
aviwriter::StreamHeader soundHeader(std::uint32_t sampleFrames = kSoundFrames);

// "hdrl" with its main header and these streams.
Bytes headers(const std::vector<Bytes>& streams);

// --- Media and indexes ----------------------------------------------------------------------------------------------

// The chunks in a recorder's order: picture, sound, picture, sound.
std::vector<Bytes> mediaChunks(const SoundShape& shape = {});

// "idx1" entries of these chunks, which follow each other in the media list and must outlive the entries; and those of
// the clip's own chunks.
std::vector<aviwriter::Idx1Entry> entriesOf(const std::vector<Bytes>& chunks);
std::vector<aviwriter::Idx1Entry> mediaEntries();

// A file with these headers and chunks, and a correct index.
Bytes clipOfChunks(const Bytes& hdrl, const std::vector<Bytes>& chunks);

// A file with these headers, the clip's media and its "idx1"; `between` comes between headers and media.
Bytes clipWith(const Bytes& hdrl, const std::vector<Bytes>& between = {});

// A file with the clip's headers and media and another "idx1".
Bytes clipIndexedBy(const std::vector<aviwriter::Idx1Entry>& entries);

// The clip with only OpenDML indexes, in `segments` segments of equal length. The super indexes have room for
// `moreRoom` more entries.
Bytes openDmlClip(std::uint32_t segments, std::uint32_t moreRoom = 0);

// Position of an entry of "idx1", or of the n-th stream's super index, in a file.
std::size_t idx1EntryAt(const Bytes& file, std::size_t entry);
std::size_t superEntryAt(const Bytes& file, std::size_t stream, std::size_t entry);

// The first part of a file.
Bytes cutTo(Bytes file, std::size_t bytes);

}  // namespace damage
