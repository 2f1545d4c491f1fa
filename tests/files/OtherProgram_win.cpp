#include "files/OtherProgram.h"

#include <windows.h>

namespace {

std::intptr_t openShared(const std::filesystem::path& path, DWORD access, DWORD share) {
    // INVALID_HANDLE_VALUE is -1 as well.
    return reinterpret_cast<std::intptr_t>(
        CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void closeIfOpen(std::intptr_t file) {
    if (file != -1) {
        CloseHandle(reinterpret_cast<HANDLE>(file));
    }
}

}  // namespace

OtherReader::OtherReader(const std::filesystem::path& path)
    : m_file(openShared(path, GENERIC_READ, FILE_SHARE_READ)) {}
OtherReader::~OtherReader() { closeIfOpen(m_file); }

OtherWriter::OtherWriter(const std::filesystem::path& path)
    : m_file(openShared(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE)) {}
OtherWriter::~OtherWriter() { closeIfOpen(m_file); }

std::filesystem::path anyLengthForm(const std::filesystem::path& path) {
    std::wstring text = path.wstring();
    for (wchar_t& character : text) {
        character = character == L'/' ? L'\\' : character;   // this form is not normalized
    }
    return L"\\\\?\\" + text;
}
