// SPDX-License-Identifier: Apache-2.0
#pragma once

class Database;
class DirectorySettings;
struct OpenDirectory;

/// What a restore does to the store and the photo files. The steps tell nobody; a store that the database refuses to
/// empty is left as it is, with error lines.
class DataRestore
{
public:
    /// All must outlive this object.
    DataRestore(Database &database, OpenDirectory &open, DirectorySettings &settings);

    /// Leaves the contacts of device management and the user's own photo. False when the database refuses.
    [[nodiscard]] bool toDefault() const;
    /// Leaves nothing, copies of earlier databases neither. False when the database refuses.
    [[nodiscard]] bool toFactory() const;

    /// Removes the photo files that no contact names, unless an earlier database that is kept may name them.
    void sweepPhotos() const;

private:
    bool emptyStore() const;

    Database &m_database;
    OpenDirectory &m_open;
    DirectorySettings &m_settings;
};
