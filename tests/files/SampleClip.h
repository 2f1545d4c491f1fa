// Sample files of the moving test picture, and the check that they import as they were drawn.
#pragma once

#include "aviwriter/Sample.h"
#include "pixels/Delivery.h"

#include <cstdint>
#include <filesystem>

// Eight frames of 8-bit YUV 4:2:2, small enough to be written at every test.
aviwriter::SampleOptions smallSample();

// Throws std::runtime_error when the file cannot be written.
void writeSampleFile(const std::filesystem::path& path, const aviwriter::SampleOptions& options);

// Whether every frame of the clip is the test picture with that number.
::testing::AssertionResult showsTestPicture(pixels::OpenClip& clip, const aviwriter::SampleOptions& options);

// The same for one frame.
::testing::AssertionResult showsFrame(pixels::OpenClip& clip, const aviwriter::SampleOptions& options,
                                      std::uint32_t number);

// Opens the file in a plug-in of its own and looks at every frame.
::testing::AssertionResult imports(const std::filesystem::path& path, const aviwriter::SampleOptions& options);
