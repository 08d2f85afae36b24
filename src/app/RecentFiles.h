#pragma once

#include "base/Profile.h"

#include <QIcon>
#include <QString>

#include <filesystem>
#include <vector>

namespace kestrune {

/// The five files opened last, newest first.
class CRecentFiles {
public:
    static constexpr int c_nMax = 5;

    void Load(const CProfile& profile);
    void Save(CProfile& profile) const;

    void Add(const std::filesystem::path& path);
    void Remove(const std::filesystem::path& path);

    int Count() const { return static_cast<int>(m_paths.size()); }
    const std::filesystem::path& At(int nIndex) const { return m_paths[static_cast<std::size_t>(nIndex)]; }

    /// "&1 photo.jpg": the row of a menu, with the folder when it is another than `current`.
    QString MenuText(int nIndex, const std::filesystem::path& current) const;
    /// The icon that the desktop gives to the file's kind.
    QIcon MenuIcon(int nIndex) const;

private:
    std::vector<std::filesystem::path> m_paths;
};

} // namespace kestrune
