// Parts that damaged files are made of: one honest little clip, in pieces.
#pragma once

#include "aviwriter/Blocks.h"
#include "damage/catalogue/Sounds.h"

#include <cstdint>
#include <vector>

namespace damage {

using aviwriter::Bytes;

inline std::uint32_t u32Of(std::size_t value) { return static_cast<std::uint32_t>(value); }

// --- The clip's pictures, 8 x 4 pixels at 25 a second, and its 16-bit stereo sound at 48000 Hz ----------------------

constexpr std::uint32_t kPictures = 10;
constexpr std::uint32_t kSoundPerPicture = 1920;                             // sample frames
constexpr std::uint32_t kSoundFrames = kPictures * kSoundPerPicture;

// A compressed picture, every sample of it 40 + `number`.
Bytes pictureFrame(std::uint32_t number);
constexpr int kFirstPictureValue = 40;

// The sound that goes with a picture.
Bytes soundChunk(std::uint32_t number, const SoundShape& shape = {});

// --- Headers --------------------------------------------------------------------------------------------------------

// "strf" data of the video; and the same with other extra data.
Bytes videoFormat();
Bytes videoFormat(const Bytes& extraData);

// "strl" lists; `more` follows header and format.
Bytes videoList(std::uint32_t frames = kPictures, const std::vector<Bytes>& more = {});
Bytes soundList(std::uint32_t sampleFrames = kSoundFrames, const std::vector<Bytes>& more = {});
Bytes streamList(const aviwriter::StreamHeader& header, const Bytes& format, const std::vector<Bytes>& more = {});

// Stream headers as those lists have them.
aviwriter::StreamHeader videoHeader(std::uint32_t frames = kPictures);
aviwriter::StreamHeader soundHeader(std::uint32_t sampleFrames = kSoundFrames);

// "hdrl" with its main header and these streams.
Bytes headers(const std::vector<Bytes>& streams);

// --- Media and indexes ----------------------------------------------------------------------------------------------

// The chunks in the order in which a recorder writes them: picture, sound, picture, sound.
std::vector<Bytes> mediaChunks(const SoundShape& shape = {});

// "idx1" entries of these chunks, which stand in the media list one behind the other and must outlive them; and of the
// clip's own.
std::vector<aviwriter::Idx1Entry> entriesOf(const std::vector<Bytes>& chunks);
std::vector<aviwriter::Idx1Entry> mediaEntries();

// A file of these headers and chunks, indexed as they lie.
Bytes clipOfChunks(const Bytes& hdrl, const std::vector<Bytes>& chunks);

// A file of these headers, the clip's media and its "idx1"; `between` stands between headers and media.
Bytes clipWith(const Bytes& hdrl, const std::vector<Bytes>& between = {});

// A file of the clip's headers and media with another "idx1".
Bytes clipIndexedBy(const std::vector<aviwriter::Idx1Entry>& entries);

// The clip with OpenDML indexes alone, in so many segments of as many pictures. The super indexes have room for so many
// more.
Bytes openDmlClip(std::uint32_t segments, std::uint32_t moreRoom = 0);

// Where the n-th entry of "idx1", or of the n-th stream's super index, begins in a file.
std::size_t idx1EntryAt(const Bytes& file, std::size_t entry);
std::size_t superEntryAt(const Bytes& file, std::size_t stream, std::size_t entry);

// The first part of a file.
Bytes cutTo(Bytes file, std::size_t bytes);

}  // namespace damage
