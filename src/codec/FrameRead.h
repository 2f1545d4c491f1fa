// Reads the compressed frame for a request's frame number.
#pragma once

#include "avi/AviStream.h"
#include "codec/FrameRequest.h"
#include "fileio/File.h"

// Reads the request's frame; for a dropped one, the nearest earlier (or else later) frame with data. `picture` is the
// size of the clip's frames. Moves the file position. Returns imNoErr, imFrameNotFound or imFileReadFailed.
csSDK_int32 readFrame(fileio::File& file, const AviStream& stream, FrameSize picture, FrameRequest& request);
