#include "importhost/validate/framework/WorkFolder.h"

#include <random>
#include <string>

namespace importhost::validate {

WorkFolder::WorkFolder() {
    std::random_device random;
    do {
        m_path = std::filesystem::temp_directory_path() / ("importhost-validate-" + std::to_string(random()));
    } while (!std::filesystem::create_directories(m_path));
}

WorkFolder::~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

}  // namespace importhost::validate
