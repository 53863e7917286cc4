#pragma once

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// The text that `act` returns in a process of its own, in which it may give up rights, descriptors and the
// root directory; "crashed" when that process does not come to its end.
template <class Act>
std::string InChild(Act const& act) {
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    pid_t const child = fork();
    if (child < 0) return "no child";
    if (child == 0) {
        std::string const result = act();
        ssize_t const written = write(ends[1], result.data(), result.size());
        _exit(written == static_cast<ssize_t>(result.size()) ? 0 : 1);
    }
    close(ends[1]);
    std::string result;
    char room[256];
    for (ssize_t got = 0; (got = read(ends[0], room, sizeof room)) > 0;)
        result.append(room, static_cast<std::size_t>(got));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? result : "crashed";
}

// Gives up the rights of the root user, for whom no permissions count. For a child process.
inline bool BecomeOrdinaryUser() {
    constexpr uid_t nobody = 65534;
    return geteuid() != 0 || setuid(nobody) == 0;
}

// Gives the process mounts of its own; a process without rights becomes the root user of a namespace for
// that. Whether that is allowed.
inline bool SeparateMounts() {
    if (unshare(CLONE_NEWNS) == 0) return true;
    std::string const user = "0 " + std::to_string(geteuid()) + " 1";
    std::string const group = "0 " + std::to_string(getegid()) + " 1";
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    auto const tell = [](char const* path, std::string const& line) {
        std::ofstream file(path);
        file << line << std::flush;
        return file.good();
    };
    return tell("/proc/self/setgroups", "deny") && tell("/proc/self/uid_map", user) &&
           tell("/proc/self/gid_map", group);
}

// Lays a file system in memory over a folder, seen by this process alone. Whether that is allowed. For a
// child process.
inline bool MountMemoryForThisProcess(std::string const& folder, unsigned long flags,
                                      char const* options = nullptr) {
    return SeparateMounts() && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", folder.c_str(), "tmpfs", flags, options) == 0;
}

// Permissions for the scope, after which everybody may do everything: the folder of the test can be deleted.
// They should be the same for all, as the test may run as the root user or as another.
class ModeScope {
public:
    ModeScope(std::string const& path, mode_t mode) : m_path(path) {
        if (chmod(path.c_str(), mode) == 0) return;
        std::perror(path.c_str());
        std::abort();
    }
    ModeScope(ModeScope const&) = delete;
    ModeScope& operator=(ModeScope const&) = delete;
    // What has this name may have gone.
    ~ModeScope() { m_ignored = chmod(m_path.c_str(), 0777); }

private:
    std::string m_path;
    int m_ignored = 0;
};

// What a child process answers that was not allowed to do what its test needs.
inline constexpr char const* cNotAllowed = "not allowed";
