// Sample files with the moving test picture, and the check that they import as drawn.
#pragma once

#include "aviwriter/Sample.h"
#include "pixels/Delivery.h"

#include <cstdint>
#include <filesystem>

// Eight frames of 8-bit YUV 4:2:2, small enough to be written in every test.
aviwriter::SampleOptions smallSample();

// Throws std::runtime_error if the file cannot be written.
void writeSampleFile(const std::filesystem::path& path, const aviwriter::SampleOptions& options);

// Checks that every frame of the clip is the test picture with that number.
::testing::AssertionResult showsTestPicture(hostkit::FrameClip& clip, const aviwriter::SampleOptions& options);

// The same for one frame.
::testing::AssertionResult showsFrame(hostkit::FrameClip& clip, const aviwriter::SampleOptions& options,
                                      std::uint32_t number);

// Opens the file in a newly loaded plug-in and checks every frame.
::testing::AssertionResult imports(const std::filesystem::path& path, const aviwriter::SampleOptions& options);
