// SPDX-License-Identifier: Apache-2.0
#include "picture/Limits.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

constexpr rlim_t mebibyte = 1 << 20;

bool limit(__rlimit_resource resource, rlim_t value)
{
    rlimit current = {};
    if (getrlimit(resource, &current) != 0)
        return false;
    current.rlim_max = std::min(current.rlim_max, value); // it may be less already
    current.rlim_cur = std::min(current.rlim_cur, current.rlim_max);
    return setrlimit(resource, &current) == 0;
}

/// When memory becomes scarce the picture goes first, and not the phone book.
void volunteer()
{
    const int file = open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return; // no such file, no such choice
    [[maybe_unused]] const ssize_t written = write(file, "1000", 4);
    close(file);
}

} // namespace

bool Limits::set()
{
    volunteer();
    const bool isBounded = limit(RLIMIT_CPU, processorSeconds) && limit(RLIMIT_NOFILE, openFiles) &&
                           limit(RLIMIT_FSIZE, outputMiB * mebibyte) && limit(RLIMIT_CORE, 0) &&
                           (isSanitized || limit(RLIMIT_DATA, memoryMiB * mebibyte));
    return isBounded && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 &&
           (isSanitized || prctl(PR_SET_DUMPABLE, 0) == 0); // a leak check looks from outside
}
