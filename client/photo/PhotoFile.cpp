// SPDX-License-Identifier: Apache-2.0
#include "client/photo/PhotoFile.h"

#include <QFile>

#include <utility>

PhotoFile::PhotoFile(PhotoFile &&other) noexcept
    : m_path(std::exchange(other.m_path, {}))
{
}

PhotoFile &PhotoFile::operator=(PhotoFile &&other) noexcept
{
    std::swap(m_path, other.m_path);
    return *this;
}

PhotoFile::~PhotoFile()
{
    // One that cannot be removed is in nobody's way.
    if (!m_path.isEmpty())
        QFile::remove(m_path);
}
