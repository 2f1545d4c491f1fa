// Programs on this system share files by locks that those who open a file ask for.
#include "importhost/validate/checks/protocol/OtherProgram.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace importhost::validate {

OtherProgram::OtherProgram(const std::filesystem::path& path, OtherUse use) : m_file(-1) {
    const int file = ::open(path.c_str(), (use == OtherUse::Writes ? O_RDWR : O_RDONLY) | O_CLOEXEC);
    if (file < 0) {
        return;
    }
    if (::flock(file, (use == OtherUse::Reads ? LOCK_SH : LOCK_EX) | LOCK_NB) != 0) {
        ::close(file);
        return;
    }
    m_file = file;
}

OtherProgram::~OtherProgram() {
    if (hasFile()) {
        ::close(static_cast<int>(m_file));
    }
}

}  // namespace importhost::validate
