// Provides an empty folder for the plug-in's log, so that a test neither reads nor changes the user's own logs:
// natively a temporary profile folder; on Windows, where the profile folder cannot be moved, the user's "quorvane"
// folder is renamed and later restored. There can be only one at a time, and no other program may write logs meanwhile.
#pragma once

#include <filesystem>
#include <memory>

class ProfileSandbox {
public:
    // Throws std::runtime_error or std::filesystem::filesystem_error if the system refuses.
    ProfileSandbox();
    ~ProfileSandbox();
    ProfileSandbox(const ProfileSandbox&) = delete;
    ProfileSandbox& operator=(const ProfileSandbox&) = delete;

    // The folders "quorvane" and, in it, "adobe"; neither exists at first.
    std::filesystem::path outerFolder() const;
    std::filesystem::path logFolder() const { return outerFolder() / "adobe"; }

private:
    struct Saved;
    std::unique_ptr<Saved> m_saved;
};
