// Windows silently ignores the closing of an invalid handle, so these tests count the calls of CloseHandle.
#include "fileio/WinFile.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using CloseHandleFunction = BOOL(WINAPI*)(HANDLE);

constexpr std::uint32_t kWriteUnshared = 2;

int closeCount = 0;
CloseHandleFunction systemCloseHandle = nullptr;

BOOL WINAPI countingCloseHandle(HANDLE handle) {
    ++closeCount;
    return systemCloseHandle(handle);
}

// The slots in this program's import table that hold a function's address; several if it lists a library twice.
std::vector<ULONG_PTR*> importSlots(CloseHandleFunction function) {
    auto* const image = reinterpret_cast<std::uint8_t*>(GetModuleHandleW(nullptr));
    const auto* dosHeader = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dosHeader->e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    std::vector<ULONG_PTR*> slots;
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(image + imports.VirtualAddress);
    for (; library->FirstThunk != 0; ++library) {
        for (auto* slot = reinterpret_cast<ULONG_PTR*>(image + library->FirstThunk); *slot != 0; ++slot) {
            if (*slot == reinterpret_cast<ULONG_PTR>(function)) {
                slots.push_back(slot);
            }
        }
    }
    return slots;
}

void replaceImport(CloseHandleFunction from, CloseHandleFunction to) {
    for (ULONG_PTR* slot : importSlots(from)) {
        DWORD protection = 0;
        VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
        *slot = reinterpret_cast<ULONG_PTR>(to);
        VirtualProtect(slot, sizeof *slot, protection, &protection);
    }
}

// Counts every call of CloseHandle from this program during its lifetime.
class WinFileClosing : public testing::Test {
protected:
    WinFileClosing() {
        closeCount = 0;
        systemCloseHandle = &CloseHandle;
        replaceImport(systemCloseHandle, &countingCloseHandle);
    }
    ~WinFileClosing() override { replaceImport(&countingCloseHandle, systemCloseHandle); }

    std::string path() const { return m_folder.path("file"); }

private:
    TempFolder m_folder;
};

TEST_F(WinFileClosing, DoesNotHappenForAFileNeverOpened) {
    { fileio::WinFile never; }
    EXPECT_EQ(closeCount, 0);
}

TEST_F(WinFileClosing, DoesNotHappenForAFileThatDidNotOpen) {
    {
        fileio::WinFile file;
        ASSERT_FALSE(file.open(path().c_str(), 1));
    }
    EXPECT_EQ(closeCount, 0);
}

TEST_F(WinFileClosing, HappensOnceAtAnOpenFilesDestruction) {
    {
        fileio::WinFile file;
        ASSERT_TRUE(file.open(path().c_str(), kWriteUnshared));
        EXPECT_EQ(closeCount, 0);
    }
    EXPECT_EQ(closeCount, 1);
}

TEST_F(WinFileClosing, DoesNotHappenAgainForAClosedFile) {
    {
        fileio::WinFile file;
        ASSERT_TRUE(file.open(path().c_str(), kWriteUnshared));
        file.close();
        EXPECT_EQ(closeCount, 1);
    }
    EXPECT_EQ(closeCount, 1);
}

}  // namespace
