// SPDX-License-Identifier: Apache-2.0
// Preloaded into programs that run under QEMU's user mode, so that they can start others. It knows no
// clone(CLONE_PIDFD), but hands on the call by which Qt asks the kernel whether it does, a waitid for a process
// descriptor: here the kernel says no, and QProcess does without. And a child needs the prefix of its libraries in
// whatever environment it is given.
#include <dlfcn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <vector>

extern "C" {

long syscall(long number, ...) noexcept
{
    static const auto real = reinterpret_cast<long (*)(long, ...) noexcept>(dlsym(RTLD_NEXT, "syscall"));
    va_list list;
    va_start(list, number);
    long arguments[6];
    for (long &argument : arguments)
        argument = va_arg(list, long);
    va_end(list);
    if (number == SYS_waitid && arguments[0] == P_PIDFD) {
        errno = EINVAL;
        return -1;
    }
    return real(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
}

int execve(const char *program, char *const arguments[], char *const environment[]) noexcept
{
    static const auto real = reinterpret_cast<decltype(&execve)>(dlsym(RTLD_NEXT, "execve"));
    std::vector<char *> variables;
    for (char *const *variable = environment; *variable; ++variable)
        variables.push_back(*variable);
    constexpr char prefix[] = "QEMU_LD_PREFIX=";
    for (char **variable = environ; *variable; ++variable) {
        if (std::strncmp(*variable, prefix, sizeof prefix - 1) == 0)
            variables.push_back(*variable);
    }
    variables.push_back(nullptr);
    return real(program, arguments, variables.data());
}

} // extern "C"
