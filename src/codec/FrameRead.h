// From a request's frame number to the compressed frame.
#pragma once

#include "avi/AviStream.h"
#include "codec/FrameRequest.h"
#include "fileio/File.h"

// Reads the request's frame of a picture of that size, or its neighbour's in place of a dropped one, and moves the
// file's position. Gives a host result: imFrameNotFound, imFileReadFailed.
csSDK_int32 readFrame(fileio::File& file, const AviStream& stream, FrameSize picture, FrameRequest& request);
