// SPDX-License-Identifier: MIT
//
// The program's own close(), fsync() and so on, which the dynamic linker takes for the library too.
// Where they do not fail they hand on to the system's.

#include "support/FailingCalls.h"

#include <dlfcn.h>
#include <sys/types.h>
#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <cstddef>

namespace {

struct Errors {
    std::array<int, 8> list;
    std::size_t next;
    std::size_t count;
};

std::array<Errors, 11> g_errors{};

/// The error that this call is to fail with, or 0.
int nextError(orvid_test::Call call) {
    Errors& errors = g_errors.at(static_cast<std::size_t>(call));
    return errors.next == errors.count ? 0 : errors.list.at(errors.next++);
}

/// Sets errno and returns true when this call is to fail.
bool fails(orvid_test::Call call) {
    const int error = nextError(call);
    if (error != 0) {
        errno = error;
    }
    return error != 0;
}

template<class Function>
Function* systems(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

namespace orvid_test {

void failCalls(Call call, const std::vector<int>& errors) {
    Errors& of = g_errors.at(static_cast<std::size_t>(call));
    of = {};
    for (const int error : errors) {
        of.list.at(of.count++) = error;
    }
}

bool failNoCalls() {
    bool areUsedUp = true;
    for (Errors& errors : g_errors) {
        areUsedUp = areUsedUp && errors.next == errors.count;
        errors = {};
    }
    return areUsedUp;
}

}  // namespace orvid_test

// The library finds only what the program exports.
#pragma GCC visibility push(default)

extern "C" {

int close(int file) {
    static auto* const systemsClose = systems<int(int)>("close");
    const int error = nextError(orvid_test::Call::close);
    const int result = systemsClose(file);
    if (error != 0) {
        errno = error;
        return -1;
    }
    return result;
}

int faccessat(int folder, const char* name, int mode, int flags) noexcept {
    static auto* const systemsFaccessat = systems<int(int, const char*, int, int)>("faccessat");
    return fails(orvid_test::Call::faccessat) ? -1 : systemsFaccessat(folder, name, mode, flags);
}

int fchmod(int file, mode_t mode) noexcept {
    static auto* const systemsFchmod = systems<int(int, mode_t)>("fchmod");
    return fails(orvid_test::Call::fchmod) ? -1 : systemsFchmod(file, mode);
}

int fchown(int file, uid_t owner, gid_t group) noexcept {
    static auto* const systemsFchown = systems<int(int, uid_t, gid_t)>("fchown");
    return fails(orvid_test::Call::fchown) ? -1 : systemsFchown(file, owner, group);
}

ssize_t fgetxattr(int file, const char* name, void* value, std::size_t size) noexcept {
    static auto* const systemsGet =
        systems<ssize_t(int, const char*, void*, std::size_t)>("fgetxattr");
    return fails(orvid_test::Call::fgetxattr) ? -1 : systemsGet(file, name, value, size);
}

ssize_t flistxattr(int file, char* names, std::size_t size) noexcept {
    static auto* const systemsList = systems<ssize_t(int, char*, std::size_t)>("flistxattr");
    return fails(orvid_test::Call::flistxattr) ? -1 : systemsList(file, names, size);
}

int fremovexattr(int file, const char* name) noexcept {
    static auto* const systemsRemove = systems<int(int, const char*)>("fremovexattr");
    return fails(orvid_test::Call::fremovexattr) ? -1 : systemsRemove(file, name);
}

int fsetxattr(int file, const char* name, const void* value, std::size_t size, int flags) noexcept {
    static auto* const systemsSet =
        systems<int(int, const char*, const void*, std::size_t, int)>("fsetxattr");
    return fails(orvid_test::Call::fsetxattr) ? -1 : systemsSet(file, name, value, size, flags);
}

int fsync(int file) {
    static auto* const systemsFsync = systems<int(int)>("fsync");
    return fails(orvid_test::Call::fsync) ? -1 : systemsFsync(file);
}

int rename(const char* from, const char* to) noexcept {
    static auto* const systemsRename = systems<int(const char*, const char*)>("rename");
    return fails(orvid_test::Call::rename) ? -1 : systemsRename(from, to);
}

ssize_t write(int file, const void* bytes, std::size_t length) {
    static auto* const systemsWrite = systems<ssize_t(int, const void*, std::size_t)>("write");
    const int error = nextError(orvid_test::Call::write);
    if (error == 0 || error == orvid_test::k_half) {
        return systemsWrite(file, bytes, error == 0 ? length : length / 2);
    }
    errno = error;
    return -1;
}

}  // extern "C"

#pragma GCC visibility pop
