#include "bench/frames/FrameSamples.h"

#include "measured/SampleFiles.h"

#include <algorithm>

std::filesystem::path bigClip() {
    return sampleFile("frames-1080p.avi", {.width = 1920, .height = 1080, .frames = 25});
}

std::filesystem::path smallClip() { return sampleFile("frames-180p.avi", {.width = 320, .height = 180, .frames = 25}); }

double medianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
