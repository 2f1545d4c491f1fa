// A temporary folder for one test, deleted by the destructor.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        m_folder = std::filesystem::temp_directory_path() / ("quorvane_test_" + std::to_string(random()) + "_" +
                                                             std::to_string(random()));
        std::filesystem::create_directories(m_folder);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // UTF-8 path of a file in the folder; `name` is UTF-8.
    std::string path(const std::string& name) const {
        const std::u8string text = m_folder.u8string();
        return std::string(text.begin(), text.end()) + "/" + name;
    }

    const std::filesystem::path& folder() const { return m_folder; }

private:
    std::filesystem::path m_folder;
};
