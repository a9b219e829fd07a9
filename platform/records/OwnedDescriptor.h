// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

/// A file descriptor that is closed with this object. Closing it leaves errno as it was. Any thread.
class OwnedDescriptor
{
public:
    explicit OwnedDescriptor(int descriptor = -1)
        : m_descriptor(descriptor)
    {
    }
    OwnedDescriptor(OwnedDescriptor &&other) noexcept
        : m_descriptor(other.release())
    {
    }
    OwnedDescriptor &operator=(OwnedDescriptor &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~OwnedDescriptor()
    {
        const int reason = errno;
        if (isOpen())
            ::close(m_descriptor);
        errno = reason;
    }

    bool isOpen() const { return m_descriptor >= 0; }
    int number() const { return m_descriptor; }
    /// The caller closes it.
    int release() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor;
};
