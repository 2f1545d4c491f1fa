// Realistic paths: in any script, and very long ones.
#include "files/OtherProgram.h"
#include "files/SampleClip.h"

#include "hostkit/system/Text.h"
#include "support/TempFolder.h"

namespace {

struct Name {
    const char* words;
    const char* utf8;
};

constexpr Name kNames[] = {
    {"Accents", "Übergänge à Genève, señor"},
    {"CombiningAccents", "U\u0308berga\u0308nge"},
    {"Greek", "Ταξίδι στη Θεσσαλονίκη"},
    {"Cyrillic", "Отпуск в Крыму"},
    {"Hebrew", "סרט משפחתי"},
    {"Arabic", "فيلم العائلة"},
    {"Devanagari", "परिवार का वीडियो"},
    {"Thai", "วิดีโอครอบครัว"},
    {"Chinese", "家庭录像"},
    {"Japanese", "家族のビデオ"},
    {"Korean", "가족 비디오"},
    {"Emoji", "holiday \U0001F3D6"},                                    // a surrogate pair
    {"JoinedEmoji", "\U0001F468\u200D\U0001F469\u200D\U0001F467"},     // three of them, joined
    {"RareIdeograph", "\U00020BB7野家"},
    {"PrintfSigns", "100%s %n 5%"},
    {"Dots", "holiday.2024.v1"},
};

class InAnyScript : public ::testing::TestWithParam<Name> {};

TEST_P(InAnyScript, AFolderAndAFileImport) {
    const TempFolder temporary;
    const std::filesystem::path name = hostkit::pathFromUtf8(GetParam().utf8);
    const std::filesystem::path folder = temporary.folder() / name;
    std::filesystem::create_directories(folder);
    const std::filesystem::path path = folder / (name.u16string() + u".avi");
    writeSampleFile(path, smallSample());
    EXPECT_TRUE(imports(path, smallSample()));
}

INSTANTIATE_TEST_SUITE_P(Names, InAnyScript, ::testing::ValuesIn(kNames),
                         [](const auto& name) { return name.param.words; });

class LongPath : public ::testing::Test {
protected:
    static constexpr std::size_t kUsualLimit = 260;      // of a path on Windows, its terminator included

    // Writes a sample to a path of about `length` characters, and returns it in the form that allows any length.
    std::filesystem::path written(std::size_t length) {
        std::filesystem::path folder = std::filesystem::absolute(m_temporary.folder());
        while (folder.u16string().size() + 60 < length) {
            folder /= "a folder with a name of some length, as cameras make them";
        }
        m_path = folder / "clip.avi";
        std::filesystem::create_directories(anyLengthForm(folder));
        writeSampleFile(anyLengthForm(m_path), smallSample());
        return m_path;
    }

    // One name at a time: removing a whole tree would exceed the limit.
    ~LongPath() override {
        std::error_code ignored;
        for (std::filesystem::path path = m_path; path != std::filesystem::absolute(m_temporary.folder());
             path = path.parent_path()) {
            std::filesystem::remove(anyLengthForm(path), ignored);
        }
    }

    TempFolder m_temporary;
    std::filesystem::path m_path = std::filesystem::absolute(m_temporary.folder());
};

TEST_F(LongPath, BeyondTheUsualLimitImportsInTheExtendedForm) {
    const std::filesystem::path path = written(500);
    ASSERT_GT(path.u16string().size(), kUsualLimit);
    EXPECT_TRUE(imports(anyLengthForm(path), smallSample()));
}

TEST_F(LongPath, BeyondAThousandCharactersImportsInTheExtendedForm) {
    const std::filesystem::path path = written(1200);
    ASSERT_GT(path.u16string().size(), 1000U);
    EXPECT_TRUE(imports(anyLengthForm(path), smallSample()));
}

// Shows that the importer passes on the host's path unchanged and has no limit of its own. Windows itself opens the
// plain form only for a host whose manifest asks for long paths, and only if they are enabled; Wine always opens it.
// This cannot show whether a user's system does.
TEST_F(LongPath, BeyondTheUsualLimitIsNotRefusedInThePlainForm) {
    const std::filesystem::path path = written(500);
    ASSERT_GT(path.u16string().size(), kUsualLimit);
    if (!std::filesystem::exists(path)) {
        GTEST_SKIP() << "the system opens no path of this length in its plain form";
    }
    EXPECT_TRUE(imports(path, smallSample()));
}

}  // namespace
