#include "log/LogFolder.h"

#include <windows.h>

#include <shlobj.h>
#include <shlwapi.h>

namespace {

// The longest output of wsprintfW, with its terminator.
constexpr std::size_t kMaxFormattedPath = 1025;

void enterFolder(wchar_t* path, const wchar_t* name) {
    PathAppendW(path, name);
    _wmkdir(path);   // the folder may exist
}

}  // namespace

LogFolder::LogFolder() {
    wchar_t path[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_PROFILE, nullptr, SHGFP_TYPE_CURRENT, path))) {
        return;
    }
    enterFolder(path, L"quorvane");
    enterFolder(path, L"adobe");
    m_path = path;
}

std::FILE* LogFolder::open(const char* baseName, int counter, bool toWrite) const {
    wchar_t path[kMaxFormattedPath] = {};
    wsprintfW(path, L"%s\\%S_%02d.log", m_path.c_str(), baseName, counter);
    return _wfopen(path, toWrite ? L"w" : L"r");
}
