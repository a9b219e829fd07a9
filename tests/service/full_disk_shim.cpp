// SPDX-License-Identifier: Apache-2.0
// Preloaded into a program, this makes the disk below a folder small: its files grow by so many bytes together, then
// what would make one longer fails as on a full disk, after a short write as there. What is left stands in a file.
// Environment: KESTIN_FULL_DISK=FILE:FOLDER; see FullDisk.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

struct Disk
{
    Disk()
    {
        const char *setting = std::getenv("KESTIN_FULL_DISK");
        const std::string text = setting ? setting : "";
        const std::size_t colon = text.find(':');
        const int file = open(text.substr(0, colon).c_str(), O_RDWR | O_CLOEXEC);
        void *memory = file < 0 ? MAP_FAILED : mmap(nullptr, sizeof *left, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (memory == MAP_FAILED)
            std::abort(); // a test that believes that the disk is small would mean nothing
        close(file);
        left = static_cast<std::atomic<std::int64_t> *>(memory);
        folder = text.substr(colon + 1) + '/';
    }

    bool holds(int file) const
    {
        char path[4096];
        const ssize_t size = readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), path, sizeof path);
        return size > 0 && std::string(path, std::size_t(size)).rfind(folder, 0) == 0;
    }

    /// What there is of the bytes, which are gone then.
    std::int64_t take(std::int64_t bytes) const
    {
        std::int64_t before = left->load();
        while (!left->compare_exchange_weak(before, before - std::min(before, bytes))) {
        }
        return std::min(before, bytes);
    }

    std::atomic<std::int64_t> *left = nullptr;
    std::string folder;
};

/// How many of the bytes from `begin` on the file can hold.
std::int64_t roomFor(int file, std::int64_t begin, std::int64_t bytes)
{
    static const Disk disk;
    struct stat status = {};
    if (!disk.holds(file) || fstat(file, &status) != 0)
        return bytes;
    const std::int64_t growth = std::clamp<std::int64_t>(begin + bytes - status.st_size, 0, bytes);
    return bytes - growth + disk.take(growth);
}

std::int64_t positionOf(int file)
{
    return lseek(file, 0, fcntl(file, F_GETFL) & O_APPEND ? SEEK_END : SEEK_CUR);
}

template <typename Function>
Function next(Function, const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

template <typename Write>
ssize_t writeWithin(int file, std::int64_t begin, std::size_t bytes, const Write &write)
{
    const std::int64_t room = roomFor(file, begin, std::int64_t(bytes));
    if (room > 0 || bytes == 0)
        return write(std::size_t(room));
    errno = ENOSPC;
    return -1;
}

} // namespace

extern "C" {

ssize_t write(int file, const void *data, size_t bytes)
{
    static const auto real = next(&::write, "write");
    return writeWithin(file, positionOf(file), bytes, [&](size_t room) { return real(file, data, room); });
}

ssize_t pwrite64(int file, const void *data, size_t bytes, off64_t begin)
{
    static const auto real = next(&::pwrite64, "pwrite64");
    return writeWithin(file, begin, bytes, [&](size_t room) { return real(file, data, room, begin); });
}

ssize_t sendfile(int to, int from, off_t *begin, size_t bytes) noexcept
{
    static const auto real = next(&::sendfile, "sendfile");
    return writeWithin(to, positionOf(to), bytes, [&](size_t room) { return real(to, from, begin, room); });
}

int ftruncate64(int file, off64_t size) noexcept
{
    static const auto real = next(&::ftruncate64, "ftruncate64");
    if (roomFor(file, 0, size) == size)
        return real(file, size);
    errno = ENOSPC;
    return -1;
}

} // extern "C"
