#include "importhost/pictures/PngFile.h"

#include "hostkit/FakeClip.h"

#include "hostkit/system/Text.h"

#include <stb/stb_image.h>

#include <memory>
#include <stdexcept>

using namespace importhost;

namespace {

using Components = std::vector<std::uint16_t>;

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// The file as another reader reads it.
Picture readBack(const Picture& picture) {
    const fakes::TemporaryFile file(u8"\u20ac.png", "");
    writePng(picture, file.path());
    const std::string bytes = bytesOf(file.path());
    const auto* data = reinterpret_cast<const stbi_uc*>(bytes.data());
    const int size = static_cast<int>(bytes.size());
    Picture read;
    int channels = 0;
    const std::unique_ptr<stbi_us, void (*)(void*)> pixels(
        stbi_load_16_from_memory(data, size, &read.width, &read.height, &channels, 0), stbi_image_free);
    read.hasAlpha = channels == 4;
    read.bits = stbi_is_16_bit_from_memory(data, size) ? 16 : 8;
    read.components.assign(pixels.get(), pixels.get() + read.width * read.height * channels);
    return read;
}

TEST(PngFile, SixteenBitsSurvive) {
    const Picture read = readBack({2, 1, 16, false, {0, 1, 256, 65535, 32768, 4660}});
    EXPECT_EQ(read.bits, 16);
    EXPECT_EQ(read.components, (Components{0, 1, 256, 65535, 32768, 4660}));
}

TEST(PngFile, EightBitsStayEight) {
    const Picture read = readBack({1, 2, 8, false, {0, 128, 255, 1, 2, 3}});
    EXPECT_EQ(read.bits, 8);
    EXPECT_EQ(read.height, 2);
    // The reader widens 8 bits by 257.
    EXPECT_EQ(read.components, (Components{0, 32896, 65535, 257, 514, 771}));
}

TEST(PngFile, AlphaSurvives) {
    const Picture read = readBack({1, 1, 16, true, {1, 2, 3, 4}});
    EXPECT_TRUE(read.hasAlpha);
    EXPECT_EQ(read.components, (Components{1, 2, 3, 4}));
}

TEST(PngFile, AMissingFolderIsAnError) {
    EXPECT_THROW(writePng({1, 1, 8, false, {1, 2, 3}}, "no such folder/a.png"), std::runtime_error);
}

}  // namespace
